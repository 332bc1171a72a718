// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// `velto url TEXT`: what the library makes of text a person typed or pasted as a web address or a path.

#include "Commands.h"
#include "Tour.h"

#include "Url+VeltoAdditions.h"

using namespace Qt::StringLiterals;

namespace {

int runUrl(const CommandLine &line)
{
    const QString text = line.arguments.at(0);
    const QUrl url = velto::URLWithVeltoValidatedString(text);
    if (url.isEmpty())
        return line.failure(u"%1 makes no URL"_s.arg(quoted(text.left(80) + (text.size() > 80 ? u"…"_s : QString()))));
    line.out << "url:       " << velto::veltoStringify(url) << '\n';
    line.out << "display:   " << velto::filePathForUserDisplay(url) << '\n';
    if (url.isLocalFile())
        line.out << "file path: " << velto::veltoFilePath(url) << '\n';
    return ExitSuccess;
}

const bool registered = registerCommand({
    .name = "url",
    .summary = "make a URL from loosely typed text",
    .synopsis = {"TEXT"},
    .description = "Prints the URL the library makes of TEXT and the form it shows users; for a file, also its "
                   "path. Text with a scheme is taken as it is; \"/path\" and \"~/path\" become file URLs (\"~\" "
                   "is the real home folder); text with \"@\" a mail address; text whose part before the first "
                   "\"/\" holds a dot and no space a web address (\"example.com/page\"). Line breaks are "
                   "dropped, else the first line is tried. Text longer than 600 characters, or that makes no "
                   "URL, is an error.",
    .arguments = {1, 1},
    .run = runUrl,
});

} // namespace
