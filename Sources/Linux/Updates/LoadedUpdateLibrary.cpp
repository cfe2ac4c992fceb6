#include "Linux/Updates/LoadedUpdateLibrary.h"

#include "Linux/Files/RunningProgram.h"
#include "Platform/Foundation.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace tessary {

namespace {

constexpr std::uint32_t knownVersion = 2;

const TessaryUpdateFunctions* functions = nullptr;
bool isUnusable = false;

std::optional<std::filesystem::path> libraryFile() {
    return installedFile(std::filesystem::path(TESSARY_LIBRARY_FOLDER) / "libtessary-updates.so");
}

const TessaryUpdateFunctions* refuse(const std::string& reason) {
    NSLog("tessary: updates cannot be looked for: " + reason);
    isUnusable = true;
    return nullptr;
}

} // namespace

bool isUpdateLibraryInstalled() {
    return functions != nullptr || (!isUnusable && libraryFile());
}

const TessaryUpdateFunctions* loadedUpdateLibrary() {
    return functions;
}

const TessaryUpdateFunctions* loadUpdateLibrary() {
    if (functions != nullptr || isUnusable)
        return functions;
    const auto file = libraryFile();
    if (!file)
        return refuse("the library is missing");
    void* library = ::dlopen(file->c_str(), RTLD_NOW | RTLD_LOCAL);
    void* symbol = library != nullptr ? ::dlsym(library, "tessaryUpdateFunctions") : nullptr;
    if (symbol == nullptr) {
        const char* error = ::dlerror(); // none for a symbol without an address
        return refuse(error != nullptr ? error : file->string() + ": no functions");
    }
    const auto* table = static_cast<const TessaryUpdateFunctions*>(symbol);
    if (table->version != knownVersion)
        return refuse(file->string() + ": another version");
    return functions = table;
}

void exitIfUpdateLibraryIsLoaded(int status) {
    if (functions != nullptr)
        std::_Exit(status);
}

} // namespace tessary
