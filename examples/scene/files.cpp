// Files that appear whole or not at all.
#include "files.h"

#include "messages.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <random>
#include <system_error>

namespace scene {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void cannotWrite(const fs::path& path, const std::string& why) {
    throw Stop(kFailed, oneLine(path.string(), 1000) + " cannot be written: " + why);
}

void write(const fs::path& path, const fs::path& named, std::string_view content) {
    errno = 0;
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file) cannotWrite(named, errno != 0 ? std::generic_category().message(errno) : "unknown reason");
}

}  // namespace

Files::~Files() {
    std::error_code ignored;
    for (const Move& move : moves_) {
        if (!move.from.empty()) fs::remove(move.from, ignored);
    }
    for (auto folder = folders_.rbegin(); folder != folders_.rend(); ++folder) fs::remove(*folder, ignored);
}

void Files::folder(const fs::path& path) {
    std::error_code error;
    fs::path made;
    for (const fs::path& part : path) {
        made /= part;
        if (fs::create_directory(made, error)) folders_.push_back(made);
        if (error && fs::exists(made) && !fs::is_directory(made)) cannotWrite(path, made.string() + " is no folder");
        if (error) cannotWrite(path, error.message());
    }
}

void Files::add(const fs::path& path, std::string_view content) {
    std::error_code error;
    const fs::file_status there = fs::status(path, error);
    if (fs::is_directory(there)) cannotWrite(path, "it is a folder");
    if (fs::exists(there) && !fs::is_regular_file(there)) {
        moves_.push_back({{}, path, std::string(content)});
        return;
    }
    // A link stays a link: what it leads to is replaced.
    const fs::path to = fs::is_regular_file(there) ? fs::canonical(path, error) : path;
    if (error && fs::exists(there)) cannotWrite(path, error.message());
    const fs::path from =
        to.parent_path() / ("." + to.filename().string() + "." + std::to_string(std::random_device()()) + ".part");
    moves_.push_back({from, to, ""});
    write(from, path, content);
}

void Files::commit() {
    for (Move& move : moves_) {
        std::error_code error;
        if (move.from.empty()) {
            write(move.to, move.to, move.content);
        } else {
            fs::rename(move.from, move.to, error);
        }
        if (error) cannotWrite(move.to, error.message());
        move.from.clear();
        move.content.clear();
    }
    moves_.clear();
    folders_.clear();
}

}  // namespace scene
