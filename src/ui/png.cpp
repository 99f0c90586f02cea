#include "ui/png.h"

#include <objidl.h>

#include <gdiplus.h>

namespace torvane {

namespace {

constexpr CLSID pngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

// The codec at work; what it has made goes before it does.
class Codec {
public:
    Codec()
    {
        Gdiplus::GdiplusStartupInput input;
        started = Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
    }
    ~Codec()
    {
        if (started)
            Gdiplus::GdiplusShutdown(token);
    }
    Codec(const Codec&) = delete;
    Codec& operator=(const Codec&) = delete;
    explicit operator bool() const
    {
        return started;
    }

private:
    ULONG_PTR token = 0;
    bool started = false;
};

// All that was written into a stream.
std::vector<uint8_t> bytesOf(IStream& stream)
{
    STATSTG state = {};
    ULONG read = 0;
    if (stream.Stat(&state, STATFLAG_NONAME) != S_OK || stream.Seek({}, STREAM_SEEK_SET, nullptr) != S_OK)
        return {};
    std::vector<uint8_t> bytes(static_cast<size_t>(state.cbSize.QuadPart));
    if (stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read) != S_OK || read != bytes.size())
        return {};
    return bytes;
}

} // namespace

std::vector<uint8_t> pngOf(HBITMAP bitmap)
{
    Codec codec;
    IStream* stream = nullptr;
    if (!codec || CreateStreamOnHGlobal(nullptr, TRUE, &stream) != S_OK)
        return {};
    bool saved = Gdiplus::Bitmap(bitmap, nullptr).Save(stream, &pngEncoder, nullptr) == Gdiplus::Ok;
    std::vector<uint8_t> bytes = saved ? bytesOf(*stream) : std::vector<uint8_t>();
    stream->Release();
    return bytes;
}

} // namespace torvane
