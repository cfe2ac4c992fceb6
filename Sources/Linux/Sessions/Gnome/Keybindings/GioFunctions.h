#pragma once

#include <gio/gio.h>

namespace tessary {

/// The functions of GLib's library for settings that the program uses.
struct GioFunctions {
    decltype(&g_settings_schema_source_get_default) schemas;
    decltype(&g_settings_schema_source_lookup) lookup;
    decltype(&g_settings_schema_list_keys) keys;
    decltype(&g_settings_schema_has_key) hasKey;
    decltype(&g_settings_schema_unref) releaseSchema;
    decltype(&g_settings_new_full) settings;
    decltype(&g_settings_get_value) value;
    decltype(&g_settings_set_value) setValue;
    decltype(&g_settings_reset) reset;
    decltype(&g_settings_sync) sync;
    decltype(&g_object_unref) release;
    decltype(&g_variant_is_of_type) isOfType;
    decltype(&g_variant_get_strv) list;
    decltype(&g_variant_get_string) text;
    decltype(&g_variant_get_uint32) number;
    decltype(&g_variant_new_strv) newList;
    decltype(&g_variant_new_string) newText;
    decltype(&g_variant_unref) releaseValue;
    decltype(&g_free) free;
    decltype(&g_strfreev) freeList;
};

/// Opens the library, with one log line where that fails. Null then.
const GioFunctions* gioFunctions();

} // namespace tessary
