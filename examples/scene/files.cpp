// The files of a run: all of them appear, or none does.
#include "files.h"

#include "messages.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <system_error>

namespace scene {
namespace {

namespace fs = std::filesystem;

constexpr std::array kEndingSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGXFSZ, SIGXCPU};
constexpr size_t kBufferBytes = size_t{1} << 18;
constexpr size_t kKeptInMemory = size_t{1} << 20;

/// The object whose temporary files a signal removes. It changes only while the signals are blocked.
Files* active = nullptr;

class BlockSignals {
public:
    BlockSignals() {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : kEndingSignals) sigaddset(&signals, signal);
        pthread_sigmask(SIG_BLOCK, &signals, &former_);
    }
    ~BlockSignals() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    BlockSignals(const BlockSignals&) = delete;
    BlockSignals& operator=(const BlockSignals&) = delete;

private:
    sigset_t former_{};
};

std::string named(const fs::path& path) { return oneLine(path.string(), 1000); }

[[noreturn]] void cannotWrite(const fs::path& path, const std::string& why) {
    throw Stop(kFailed, named(path) + " cannot be written: " + why);
}
[[noreturn]] void cannotWrite(const fs::path& path, int error) {
    cannotWrite(path, std::generic_category().message(error));
}

[[noreturn]] void sameFile(const fs::path& path) {
    throw Stop(kBadInput, named(path) + " conflicts with the file of another output");
}

/// @return 0 or an error number
int writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) return errno;
        if (written > 0) text.remove_prefix(static_cast<size_t>(written));
    }
    return 0;
}

/// Follows symbolic links to the name that they lead to, whether it exists or not.
fs::path followLinks(const fs::path& path) {
    constexpr int kMaxLinks = 40;
    std::error_code error;
    fs::path target = path;
    for (int links = 0; fs::is_symlink(fs::symlink_status(target, error)); ++links) {
        if (links == kMaxLinks) cannotWrite(path, ELOOP);
        const fs::path next = fs::read_symlink(target, error);
        if (error) cannotWrite(path, error.message());
        target = target.parent_path() / next;
    }
    const fs::path parent = fs::canonical(target.has_parent_path() ? target.parent_path() : ".", error);
    if (error) cannotWrite(path, error.message());
    return parent / target.filename();
}

/// A name that does not depend on the target's, which may already be as long as the file system permits.
fs::path temporaryName(const fs::path& folder) {
    std::random_device random;
    return folder / (".zan-scene-" + std::to_string(random()) + "-" + std::to_string(random()) + ".part");
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

/// A file without a name in the folder for temporary files.
int openUnnamed() {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    if (error) return -1;
    const fs::path name = temporaryName(folder);
    const BlockSignals blocked;
    const int descriptor = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor >= 0) ::unlink(name.c_str());
    return descriptor;
}

}  // namespace

Output::~Output() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

void Output::write(std::string_view text) {
    buffer_ += text;
    const bool kept = temporary_.empty() && descriptor_ < 0;
    if (buffer_.size() >= (kept ? kKeptInMemory : kBufferBytes)) flush();
}

void Output::flush() {
    if (descriptor_ < 0) descriptor_ = openUnnamed();
    if (descriptor_ < 0) cannotWrite(given_, "no temporary file: " + std::generic_category().message(errno));
    if (const int error = writeAll(descriptor_, buffer_)) cannotWrite(given_, error);
    buffer_.clear();
}

void Output::flushAndClose() {
    if (temporary_.empty() || descriptor_ < 0) return;
    flush();
    buffer_.shrink_to_fit();
    // Some file systems report a failed write here.
    if (::close(std::exchange(descriptor_, -1)) != 0) cannotWrite(given_, errno);
}

template <class Sink>
void Output::forEachPiece(const Sink& sink) {
    if (descriptor_ >= 0) {
        flush();
        if (::lseek(descriptor_, 0, SEEK_SET) < 0) cannotWrite(given_, errno);
        std::string piece(kBufferBytes, '\0');
        for (;;) {
            const ssize_t count = ::read(descriptor_, piece.data(), piece.size());
            if (count < 0) cannotWrite(given_, errno);
            if (count == 0) break;
            sink(std::string_view(piece.data(), static_cast<size_t>(count)));
        }
    } else {
        sink(std::string_view(buffer_));
    }
}

void Output::copyTo(int descriptor) {
    forEachPiece([&](std::string_view piece) {
        if (const int error = writeAll(descriptor, piece)) cannotWrite(given_, error);
    });
}

void Output::copyTo(std::ostream& stream) {
    forEachPiece([&](std::string_view piece) { stream << piece; });
    if (!stream.flush()) throw Stop(kFailed, "standard output cannot be written");
}

Files::Files() {
    const BlockSignals blocked;
    active = this;
}

Files::~Files() {
    const BlockSignals blocked;
    removeTemporaries();
    active = nullptr;
}

void Files::removeTemporaries() noexcept {
    // Called by the signal handler, too: nothing but unlink and rmdir.
    for (const Output& output : outputs_) {
        if (!output.temporary_.empty()) ::unlink(output.temporary_.c_str());
    }
    for (auto folder = folders_.rbegin(); folder != folders_.rend(); ++folder) ::rmdir(folder->c_str());
}

void Files::onSignal(int signal) {
    if (active != nullptr) active->removeTemporaries();
    // The default action of the signal, taken when this handler returns.
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void Files::cleanUpOnSignals() {
    struct sigaction action {};
    action.sa_handler = onSignal;
    for (const int signal : kEndingSignals) sigaddset(&action.sa_mask, signal);
    for (const int signal : kEndingSignals) {
        struct sigaction former {};
        sigaction(signal, nullptr, &former);
        if (former.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
    }
}

void Files::protect(const fs::path& path, const std::string& what) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) protected_.push_back({{status.st_dev, status.st_ino}, what});
}

void Files::protectStandardOutput() {
    struct stat status {};
    if (::fstat(STDOUT_FILENO, &status) != 0 || !S_ISREG(status.st_mode)) return;
    protected_.push_back({{status.st_dev, status.st_ino}, "the file that standard output goes to"});
}

void Files::folder(const fs::path& path) {
    std::error_code error;
    fs::path part;
    for (const fs::path& name : path) {
        part /= name;
        if (targets_.count(fs::weakly_canonical(fs::absolute(part, error), error)) > 0) sameFile(path);
        const BlockSignals blocked;
        if (fs::create_directory(part, error)) folders_.push_back(part);
        if (error && fs::exists(part) && !fs::is_directory(part)) cannotWrite(path, named(part) + " is no folder");
        if (error) cannotWrite(path, error.message());
    }
}

Output& Files::open(const fs::path& path) {
    struct stat status {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (!exists && errno != ENOENT) cannotWrite(path, errno);
    if (exists && S_ISDIR(status.st_mode)) cannotWrite(path, "it is a folder");
    const FileId id{status.st_dev, status.st_ino};
    if (exists) {
        for (const auto& [protectedId, what] : protected_) {
            if (id == protectedId) throw Stop(kBadInput, named(path) + " is " + what);
        }
    }
    const bool replaceable = !exists || S_ISREG(status.st_mode);
    // /dev/stderr may be a link to a pipe. A pipe has no path, so the link cannot be followed.
    const fs::path target = replaceable ? followLinks(path) : path;
    if (exists && ::access(target.c_str(), W_OK) != 0) cannotWrite(path, errno);
    const bool first = !replaceable || (targets_.insert(target).second && (!exists || targetIds_.insert(id).second));
    if (!first) sameFile(path);

    const fs::path temporary = replaceable ? temporaryName(target.parent_path()) : fs::path();
    const BlockSignals blocked;
    Output& output = outputs_.emplace_back();
    output.given_ = path;
    output.target_ = target;
    output.replaces_ = exists;
    if (!replaceable) return output;
    const mode_t mode = exists ? status.st_mode & 07777U : 0666U;
    output.descriptor_ = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode & 0666U);
    if (output.descriptor_ < 0) cannotWrite(path, errno);
    output.temporary_ = temporary;
    if (!exists) return output;
    // The owner, where that is permitted, comes first: a change of owner clears some bits of the mode.
    [[maybe_unused]] const int owner = ::fchown(output.descriptor_, status.st_uid, status.st_gid);
    if (::fchmod(output.descriptor_, mode) != 0) cannotWrite(path, errno);
    return output;
}

void Files::add(const fs::path& path, std::string_view content) {
    Output& output = open(path);
    output.write(content);
    output.flushAndClose();
}

Output& Files::open(std::ostream& stream) {
    const BlockSignals blocked;
    Output& output = outputs_.emplace_back();
    output.given_ = "standard output";
    output.stream_ = &stream;
    return output;
}

size_t Files::count() const {
    return static_cast<size_t>(
        std::count_if(outputs_.begin(), outputs_.end(), [](const Output& o) { return !o.temporary_.empty(); }));
}

void Files::commit(Progress& progress) {
    for (Output& output : outputs_) output.flushAndClose();
    // What cannot be undone comes first: if it fails, no file has been moved.
    for (Output& output : outputs_) {
        if (output.stream_ != nullptr) {
            output.copyTo(*output.stream_);
        } else if (output.temporary_.empty()) {
            const Descriptor device(::open(output.target_.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC));
            if (device.number() < 0) cannotWrite(output.given_, errno);
            output.copyTo(device.number());
        }
    }
    // A signal waits for the end of the moves.
    const BlockSignals blocked;
    moveAll(progress);
    for (Output& output : outputs_) {
        if (output.exchanged_) ::unlink(output.temporary_.c_str());
        output.temporary_.clear();
    }
    outputs_.clear();
    folders_.clear();
}

void Files::moveAll(Progress& progress) {
    size_t done = 0;
    for (auto output = outputs_.begin(); output != outputs_.end(); ++output) {
        progress.at("moving files into place", done++, outputs_.size());
        if (output->temporary_.empty()) continue;
        const char* from = output->temporary_.c_str();
        const char* to = output->target_.c_str();
        // An exchange can be undone. It would move a folder, too, if one has appeared there.
        struct stat status {};
        const bool isFile = ::lstat(to, &status) == 0 && S_ISREG(status.st_mode);
        output->replaces_ = isFile;
        output->exchanged_ = isFile && ::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_EXCHANGE) == 0;
        if (output->exchanged_ || ::rename(from, to) == 0) continue;
        const std::string why = std::generic_category().message(errno);
        cannotWrite(output->given_, why + undoMoves(output));
    }
}

/// @return what could not be undone, for the message
std::string Files::undoMoves(std::list<Output>::iterator end) {
    std::string failures;
    for (auto output = outputs_.begin(); output != end; ++output) {
        if (output->temporary_.empty()) continue;
        const char* from = output->temporary_.c_str();
        const char* to = output->target_.c_str();
        if (output->exchanged_) {
            if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_EXCHANGE) == 0) continue;
            failures += "; the former content of " + named(output->given_) + " is in " + named(output->temporary_);
            output->temporary_.clear();  // must not be removed
        } else if (output->replaces_) {
            failures += "; " + named(output->given_) + " has been replaced";
        } else {
            ::unlink(to);
        }
    }
    return failures;
}

}  // namespace scene
