#include "Linux/Sessions/Gnome/Keybindings/GioFunctions.h"

#include "Platform/Foundation.h"

#include <dlfcn.h>

#include <optional>
#include <string>

namespace tessary {

namespace {

/// Also of the libraries on which this one stands.
template <typename Function>
bool find(void* library, const char* name, Function& function) {
    // POSIX has a function's address fit into a pointer to an object.
    function = reinterpret_cast<Function>(::dlsym(library, name));
    return function != nullptr;
}

bool findAll(void* library, GioFunctions& gio) {
    return find(library, "g_settings_schema_source_get_default", gio.schemas) &&
           find(library, "g_settings_schema_source_lookup", gio.lookup) &&
           find(library, "g_settings_schema_list_keys", gio.keys) &&
           find(library, "g_settings_schema_has_key", gio.hasKey) &&
           find(library, "g_settings_schema_unref", gio.releaseSchema) &&
           find(library, "g_settings_new_full", gio.settings) &&
           find(library, "g_settings_get_value", gio.value) &&
           find(library, "g_settings_set_value", gio.setValue) &&
           find(library, "g_settings_reset", gio.reset) &&
           find(library, "g_settings_sync", gio.sync) &&
           find(library, "g_object_unref", gio.release) &&
           find(library, "g_variant_is_of_type", gio.isOfType) &&
           find(library, "g_variant_get_strv", gio.list) &&
           find(library, "g_variant_get_string", gio.text) &&
           find(library, "g_variant_get_uint32", gio.number) &&
           find(library, "g_variant_new_strv", gio.newList) &&
           find(library, "g_variant_new_string", gio.newText) &&
           find(library, "g_variant_unref", gio.releaseValue) &&
           find(library, "g_free", gio.free) && find(library, "g_strfreev", gio.freeList);
}

std::optional<GioFunctions> opened() {
    GioFunctions gio{};
    void* library = ::dlopen("libgio-2.0.so.0", RTLD_NOW | RTLD_LOCAL);
    if (library != nullptr && findAll(library, gio))
        return gio;
    NSLog("tessary: the desktop's settings cannot be reached: " + std::string(::dlerror()));
    return std::nullopt;
}

} // namespace

const GioFunctions* gioFunctions() {
    static const auto functions = opened();
    return functions ? &*functions : nullptr;
}

} // namespace tessary
