#include "Platform/AppKit/NSImage.h"

#include "Linux/Desktop/Symbols/Symbols.h"

std::shared_ptr<NSImage>
NSImage::imageWithSystemSymbolName(std::string_view name,
                                   const std::optional<std::string>& accessibilityDescription) {
    if (!tessary::isSymbol(name))
        return nullptr;
    return std::shared_ptr<NSImage>(new NSImage(name, accessibilityDescription));
}
