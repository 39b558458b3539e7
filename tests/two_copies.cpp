// Two copies of the library in one process: depending on how they are loaded, the second one uses the first one's
// globals block or has its own. Argument: the path of the library.
#include "zan/frame.h"
#include "zan/platform/bel.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace {

using Load = void* (*)(const char* path);

void* loadLocal(const char* path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL); }
void* loadGlobal(const char* path) { return dlopen(path, RTLD_NOW | RTLD_GLOBAL); }
void* loadDeepBind(const char* path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND); }
void* loadNamespace(const char* path) { return dlmopen(LM_ID_NEWLM, path, RTLD_NOW); }

struct Row {
    const char* what;
    Load loadFirst;
    Load loadSecond;
    int32_t secondBirth;
};
constexpr Row kRows[] = {
    {"RTLD_LOCAL keeps them apart", loadLocal, loadLocal, 0},
    {"a first copy with RTLD_GLOBAL gives its block to the second", loadGlobal, loadLocal, kBel_Err_AlreadyStarted},
    {"RTLD_GLOBAL for just the second copy: they stay apart", loadLocal, loadGlobal, 0},
    {"RTLD_DEEPBIND for the second copy keeps them apart", loadGlobal, loadDeepBind, 0},
    {"dlmopen keeps them apart", loadGlobal, loadNamespace, 0},
};

int32_t birth(void* library) {
    if (library == nullptr) {
        std::printf("%s\n", dlerror());
        return -1;
    }
    return reinterpret_cast<decltype(&Zan_Birth)>(dlsym(library, "Zan_Birth"))(Zan_Service_Basic, nullptr);
}

}  // namespace

int main(int, char** argv) {
    const char* const copy = "libzan_copy.so";
    std::filesystem::copy_file(argv[1], copy, std::filesystem::copy_options::overwrite_existing);
    int failed = 0;
    for (const Row& row : kRows) {
        std::fflush(stdout);
        const pid_t child = fork();
        if (child == 0) {
            const int32_t first = birth(row.loadFirst(argv[1]));
            const int32_t second = birth(row.loadSecond((std::filesystem::current_path() / copy).c_str()));
            if (first == 0 && second == row.secondBirth) _exit(0);
            std::printf("%s: Zan_Birth returned %d and %d, expected 0 and %d\n", row.what, first, second,
                        row.secondBirth);
            std::fflush(stdout);
            _exit(1);
        }
        int status = 0;
        if (waitpid(child, &status, 0) != child || status != 0) ++failed;
    }
    return failed == 0 ? 0 : 1;
}
