// Files that appear whole or not at all.
#ifndef ZAN_SCENE_FILES_H
#define ZAN_SCENE_FILES_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace scene {

/// Writes every file beside its place, under a name of its own, and moves all of them there at the end. Whatever goes
/// wrong before leaves neither a file nor a folder behind.
class Files {
public:
    Files() = default;
    ~Files();
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    /// Makes sure that a folder is there.
    /// @throws Stop
    void folder(const std::filesystem::path& path);
    /// Writes a file beside its place. What is there and no ordinary file (a terminal, a pipe) is written at commit.
    /// @throws Stop
    void add(const std::filesystem::path& path, std::string_view content);
    /// Moves the files to their places.
    /// @throws Stop
    void commit();

private:
    struct Move {
        std::filesystem::path from, to;
        std::string content;  ///< for what cannot be moved to: from is empty
    };
    std::vector<Move> moves_;
    std::vector<std::filesystem::path> folders_;
};

}  // namespace scene

#endif  // ZAN_SCENE_FILES_H
