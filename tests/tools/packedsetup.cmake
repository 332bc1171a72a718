# SPDX-FileCopyrightText: 2026 VeltoCore developers
# SPDX-License-Identifier: MIT

# Run by ctest before the gzip and archive cases: a fresh folder with the files they work on.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER}/tree/sub)
file(WRITE ${FOLDER}/notes.txt "Meeting notes, nothing decided yet.\n")
file(WRITE ${FOLDER}/plain.gz "plain text with a .gz name\n")
file(WRITE ${FOLDER}/tree/a.txt "alpha\n")
file(WRITE ${FOLDER}/tree/sub/b.txt "beta\n")
# 70 MiB of zeros without writing them: over the 64 MiB from which progress is shown.
execute_process(COMMAND truncate -s 70M ${FOLDER}/big RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "truncate failed: ${status}")
endif()
