#include "Platform/CoreGraphics.h"

bool CGRectContainsPoint(const CGRect& rect, const CGPoint& point) {
    return point.x >= rect.origin.x && point.x < rect.origin.x + rect.size.width &&
           point.y >= rect.origin.y && point.y < rect.origin.y + rect.size.height;
}
