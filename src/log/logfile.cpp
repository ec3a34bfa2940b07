// SPDX-License-Identifier: MIT
#include "logfile.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto topFolder = "parlo"_L1;
constexpr mode_t othersToo = S_IRWXG | S_IRWXO;

/// Closes the descriptor with its scope, and keeps errno.
class descriptor
{
public:
    explicit descriptor(int opened) : number(opened) {}
    ~descriptor()
    {
        const int before = errno;
        if (number >= 0)
            ::close(number);
        errno = before;
    }
    descriptor(const descriptor &) = delete;
    descriptor &operator=(const descriptor &) = delete;

    operator int() const { return number; }
    int take() { return std::exchange(number, -1); }

private:
    int number;
};

/// Whether this is the user's own; if so, nobody else can read it from now on.
bool makePrivate(int opened, mode_t kind, struct stat *found)
{
    if (::fstat(opened, found) != 0)
        return false;
    if ((found->st_mode & S_IFMT) != kind || found->st_uid != ::geteuid()) {
        errno = EPERM;
        return false;
    }
    return (found->st_mode & othersToo) == 0 || ::fchmod(opened, found->st_mode & S_IRWXU) == 0;
}

int openFolder(int in, const QByteArray &name, bool mayMake)
{
    // Another Parlo may make it at the same moment.
    if (mayMake && ::mkdirat(in, name.constData(), S_IRWXU) != 0 && errno != EEXIST)
        return -1;
    descriptor opened(::openat(in, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat found = {};
    return opened >= 0 && makePrivate(opened, S_IFDIR, &found) ? opened.take() : -1;
}

ssize_t writeOnce(int opened, QByteArrayView bytes)
{
    ssize_t written = 0;
    do
        written = ::write(opened, bytes.data(), static_cast<size_t>(bytes.size()));
    while (written < 0 && errno == EINTR);
    return written;
}

} // namespace

logfile::logfile(QString dataFolder, QString inFolder, const QString &itsName)
    : data(std::move(dataFolder)), folder(std::move(inFolder)), name(itsName + u".log")
{
}

QString logfile::topOf(const QString &dataFolder)
{
    return dataFolder + u'/' + topFolder;
}

QString logfile::path() const
{
    return topOf(data) + u'/' + folder + u'/' + name;
}

bool logfile::append(const QByteArray &lines)
{
    // What is open for writing alone cannot be looked at.
    const descriptor opened(open(O_RDWR | O_APPEND | O_CREAT));
    const off_t size = opened < 0 ? -1 : ::lseek(opened, 0, SEEK_END);
    if (size >= 0) {
        char last = '\n';
        const bool isCut = size > 0 && ::pread(opened, &last, 1, size - 1) == 1 && last != '\n';
        const QByteArray whole = isCut ? '\n' + lines : lines;
        const ssize_t written = writeOnce(opened, whole);
        if (written == whole.size())
            return true;
        // The system says why only to the next one.
        if (written >= 0 &&
            writeOnce(opened, QByteArrayView(whole).sliced(written)) == whole.size() - written)
            return true;
    }
    m_error = qt_error_string(errno);
    return false;
}

QByteArray logfile::tail(qint64 most) const
{
    const descriptor opened(open(O_RDONLY));
    const off_t size = opened < 0 ? 0 : ::lseek(opened, 0, SEEK_END);
    if (size <= 0)
        return {};
    // One byte more tells whether a line begins here.
    const off_t from = qMax(off_t{0}, size - most - 1);
    QByteArray bytes(static_cast<qsizetype>(size - from), Qt::Uninitialized);
    const ssize_t got = ::pread(opened, bytes.data(), static_cast<size_t>(bytes.size()), from);
    bytes.truncate(qMax(ssize_t{0}, got));
    if (from > 0) {
        const qsizetype lineEnd = bytes.indexOf('\n');
        bytes.remove(0, lineEnd < 0 ? bytes.size() : lineEnd + 1);
    }
    return bytes;
}

int logfile::open(int flags) const
{
    const bool mayMake = (flags & O_CREAT) != 0;
    if (mayMake)
        QDir().mkpath(data);
    const descriptor root(::open(QFile::encodeName(data).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const descriptor top(root < 0 ? -1 : openFolder(root, QByteArray(topFolder.data()), mayMake));
    const descriptor network(top < 0 ? -1 : openFolder(top, QFile::encodeName(folder), mayMake));
    if (network < 0)
        return -1;
    // Without O_NONBLOCK, a FIFO would wait for its other end.
    descriptor opened(::openat(network, QFile::encodeName(name).constData(),
                               flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, S_IRUSR | S_IWUSR));
    struct stat found = {};
    if (opened < 0 || !makePrivate(opened, S_IFREG, &found))
        return -1;
    // A second name may be in a folder that others can read.
    if (found.st_nlink != 1) {
        errno = EMLINK;
        return -1;
    }
    return opened.take();
}
