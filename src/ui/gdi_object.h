// GDI objects that go with the scope or the record that made them; how many of each are alive is counted.
#pragma once

#include "ui/win32.h"

#include <utility>

namespace torvane {

enum GdiKind : int { gdiPen, gdiBrush, gdiFont, gdiBitmap, gdiKindCount };

// For whoever looks for one that was not given back. Window thread only.
inline int livingGdiObjects[gdiKindCount];

template <typename Handle>
constexpr GdiKind gdiKindOf();
template <>
constexpr GdiKind gdiKindOf<HPEN>()
{
    return gdiPen;
}
template <>
constexpr GdiKind gdiKindOf<HBRUSH>()
{
    return gdiBrush;
}
template <>
constexpr GdiKind gdiKindOf<HFONT>()
{
    return gdiFont;
}
template <>
constexpr GdiKind gdiKindOf<HBITMAP>()
{
    return gdiBitmap;
}

template <typename Handle>
class GdiObject {
public:
    GdiObject() = default;
    explicit GdiObject(Handle made) : handle(made)
    {
        livingGdiObjects[gdiKindOf<Handle>()] += handle != nullptr;
    }
    GdiObject(GdiObject&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    GdiObject& operator=(GdiObject&& other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }
    ~GdiObject()
    {
        if (handle == nullptr)
            return;
        DeleteObject(handle);
        --livingGdiObjects[gdiKindOf<Handle>()];
    }
    operator Handle() const
    {
        return handle;
    }

private:
    Handle handle = nullptr;
};

// A device context in memory with a bitmap in it; the bitmap outlives it.
class MemoryDevice {
public:
    MemoryDevice(HDC like, HBITMAP bitmap) : device(CreateCompatibleDC(like)), before(SelectObject(device, bitmap)) {}
    ~MemoryDevice()
    {
        SelectObject(device, before);
        DeleteDC(device);
    }
    MemoryDevice(const MemoryDevice&) = delete;
    MemoryDevice& operator=(const MemoryDevice&) = delete;
    operator HDC() const
    {
        return device;
    }

private:
    HDC device;
    HGDIOBJ before;
};

} // namespace torvane
