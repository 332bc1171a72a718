// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The other process of the file watcher's tests: makes changes to files, one verb after another, so that
// the watcher sees real kernel events caused by someone else.
//
//   filechanger VERB ARGS... [VERB ARGS...]...
//     write PATH TEXT          overwrite the start of PATH in place (no create, no truncate)
//     append PATH TEXT         append TEXT
//     truncate PATH SIZE       set the size
//     chmod PATH OCTAL         change the mode
//     link PATH NEWPATH        make a hard link
//     unlink PATH              remove a name
//     rename FROM TO           rename
//     save PATH TEXT           atomic save: write a new file beside PATH and rename it onto PATH
//     umount FOLDER            unmount the file system mounted there
//     appendround COUNT FOLDER N   COUNT one-byte appends, round robin over FOLDER/0 ... FOLDER/N-1
//     chmodall FOLDER N        chmod 600 each of FOLDER/0 ... FOLDER/N-1
//     spam PATH COUNT          COUNT one-byte appends to PATH (until killed, for large COUNT)
//
// Exits with 0 when every verb succeeded, else prints the failing verb and the error and exits with 1.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

bool fail(const std::string &what)
{
    std::fprintf(stderr, "filechanger: %s: %s\n", what.c_str(), std::strerror(errno));
    return false;
}

bool writeAll(int descriptor, const std::string &text)
{
    return ::write(descriptor, text.data(), text.size()) == ssize_t(text.size());
}

bool writeFile(const std::string &path, const std::string &text, int flags)
{
    const int descriptor = ::open(path.c_str(), flags, 0644);
    if (descriptor < 0)
        return fail("open " + path);
    const bool written = writeAll(descriptor, text);
    ::close(descriptor);
    return written || fail("write " + path);
}

std::string member(const std::string &folder, long index)
{
    return folder + "/" + std::to_string(index);
}

// Keeps every file of the round open, so that each append is a single write() and nothing else.
bool appendRound(long count, const std::string &folder, long files)
{
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
    std::vector<int> descriptors;
    for (long i = 0; i < files; ++i) {
        descriptors.push_back(::open(member(folder, i).c_str(), O_WRONLY | O_APPEND));
        if (descriptors.back() < 0)
            return fail("open " + member(folder, i));
    }
    for (long n = 0; n < count; ++n) {
        if (!writeAll(descriptors[size_t(n % files)], "x"))
            return fail("append");
    }
    for (int descriptor : descriptors)
        ::close(descriptor);
    return true;
}

bool run(const std::vector<std::string> &args, size_t &at)
{
    const std::string verb = args[at++];
    auto next = [&]() -> std::string { return at < args.size() ? args[at++] : std::string(); };
    if (verb == "write" || verb == "append") {
        const std::string path = next(), text = next();
        return writeFile(path, text, verb == "write" ? O_WRONLY : O_WRONLY | O_APPEND);
    }
    if (verb == "save") {
        const std::string path = next(), temporary = path + ".saving";
        return writeFile(temporary, next(), O_WRONLY | O_CREAT | O_TRUNC)
            && (::rename(temporary.c_str(), path.c_str()) == 0 || fail("rename onto " + path));
    }
    if (verb == "truncate") {
        const std::string path = next();
        return ::truncate(path.c_str(), std::atol(next().c_str())) == 0 || fail("truncate " + path);
    }
    if (verb == "chmod") {
        const std::string path = next();
        return ::chmod(path.c_str(), mode_t(std::strtol(next().c_str(), nullptr, 8))) == 0 || fail("chmod " + path);
    }
    if (verb == "link") {
        const std::string path = next(), link = next();
        return ::link(path.c_str(), link.c_str()) == 0 || fail("link " + path);
    }
    if (verb == "unlink") {
        const std::string path = next();
        return ::unlink(path.c_str()) == 0 || fail("unlink " + path);
    }
    if (verb == "rename") {
        const std::string from = next(), to = next();
        return ::rename(from.c_str(), to.c_str()) == 0 || fail("rename " + from);
    }
    if (verb == "umount") {
        const std::string folder = next();
        return ::umount(folder.c_str()) == 0 || fail("umount " + folder);
    }
    if (verb == "appendround") {
        const long count = std::atol(next().c_str());
        const std::string folder = next();
        return appendRound(count, folder, std::atol(next().c_str()));
    }
    if (verb == "chmodall") {
        const std::string folder = next();
        const long files = std::atol(next().c_str());
        for (long i = 0; i < files; ++i) {
            if (::chmod(member(folder, i).c_str(), 0600) != 0)
                return fail("chmod " + member(folder, i));
        }
        return true;
    }
    if (verb == "spam") {
        const std::string path = next();
        const long count = std::atol(next().c_str());
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_APPEND);
        if (descriptor < 0)
            return fail("open " + path);
        for (long n = 0; n < count; ++n) {
            if (!writeAll(descriptor, "x"))
                return fail("append " + path);
        }
        ::close(descriptor);
        return true;
    }
    errno = EINVAL;
    return fail("unknown verb " + verb);
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    for (size_t at = 0; at < args.size();) {
        if (!run(args, at))
            return 1;
    }
    return 0;
}
