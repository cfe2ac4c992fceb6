#include "Platform/AppKit/NSImage.h"

#include <utility>

NSImage::NSImage(std::string_view symbolName, std::optional<std::string> accessibilityDescription)
    : symbolName_(symbolName), accessibilityDescription_(std::move(accessibilityDescription)) {}
