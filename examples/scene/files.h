// The files of a run: all of them appear, or none does.
#ifndef ZAN_SCENE_FILES_H
#define ZAN_SCENE_FILES_H

#include "progress.h"

#include <filesystem>
#include <list>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scene {

/// One output. A file is written under a temporary name in its own folder. What cannot be replaced (a device, a pipe,
/// standard output) is kept until the commit: in memory while it is small, then in a temporary file without a name.
class Output {
public:
    Output() = default;
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// @throws Stop
    void write(std::string_view text);

private:
    friend class Files;
    void flush();
    void flushAndClose();
    void copyTo(int descriptor);
    void copyTo(std::ostream& stream);
    template <class Sink>
    void forEachPiece(const Sink& sink);

    std::filesystem::path given_;      ///< as the user named it
    std::filesystem::path target_;     ///< links resolved
    std::filesystem::path temporary_;  ///< empty for what cannot be replaced
    std::ostream* stream_ = nullptr;
    bool replaces_ = false;   ///< the target exists
    bool exchanged_ = false;  ///< the temporary name holds the target's former content
    int descriptor_ = -1;
    std::string buffer_;
};

/// The outputs of a run. Until the commit every target is as it was. Without a commit, or after a failed one, no new
/// file or folder stays.
class Files {
public:
    Files();
    ~Files();
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    /// Declares a file that no output may replace.
    /// @param what  its name in the message, "the deck"
    void protect(const std::filesystem::path& path, const std::string& what);
    /// The same for standard output, if it goes to a file.
    void protectStandardOutput();

    /// Creates a folder, and those above it, unless it exists.
    /// @throws Stop
    void folder(const std::filesystem::path& path);
    /// Opens an output. A symbolic link is followed, also to a file that does not exist yet.
    /// @throws Stop when it is a folder, a protected file, the same file as another output, or cannot be written
    Output& open(const std::filesystem::path& path);
    /// An output with this content.
    /// @throws Stop
    void add(const std::filesystem::path& path, std::string_view content);
    /// An output to a stream.
    Output& open(std::ostream& stream);

    /// Writes streams and devices, then moves the files into place. When a move fails, those before it are undone.
    /// @throws Stop
    void commit(Progress& progress);
    /// The number of outputs that are files, without streams and devices.
    [[nodiscard]] size_t count() const;

    /// From now on a signal that ends the program first removes the temporary files and the new folders of the Files
    /// object that exists then. A signal that was ignored stays ignored. One thread only may use a Files object.
    static void cleanUpOnSignals();

private:
    using FileId = std::pair<unsigned long long, unsigned long long>;  // device, inode

    static void onSignal(int signal);
    void removeTemporaries() noexcept;
    void moveAll(Progress& progress);
    std::string undoMoves(std::list<Output>::iterator end);

    std::list<Output> outputs_;
    std::vector<std::filesystem::path> folders_;
    std::vector<std::pair<FileId, std::string>> protected_;
    std::set<std::filesystem::path> targets_;
    std::set<FileId> targetIds_;
};

}  // namespace scene

#endif  // ZAN_SCENE_FILES_H
