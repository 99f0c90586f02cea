// XmlLite has no import library everywhere: it is loaded when it is needed.
#include "core/xml.h"

#include "core/wide_text.h"

#include <windows.h>
#include <xmllite.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace torvane {

namespace {

// What the parser reads from. It lives on the stack of readXml, whatever its references say.
class Stream final : public ISequentialStream {
public:
    explicit Stream(const NextPiece& pieces) : utf8(pieces) {}
    virtual ~Stream() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_ISequentialStream);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return 1;
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        return 1;
    }

    HRESULT STDMETHODCALLTYPE Read(void* to, ULONG wanted, ULONG* read) override
    {
        if (used == piece.size() && !refill())
            return E_FAIL;
        size_t count = std::min<size_t>(wanted, piece.size() - used);
        std::copy_n(piece.data() + used, count, static_cast<uint8_t*>(to));
        used += count;
        *read = static_cast<ULONG>(count);
        return count == wanted ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override
    {
        return E_NOTIMPL;
    }

    SourceFault fault = SourceFault::none;
    std::exception_ptr thrown = nullptr; // no exception may pass through the parser

private:
    bool refill()
    {
        try {
            fault = utf8(piece);
        } catch (...) {
            thrown = std::current_exception();
        }
        used = 0;
        return fault == SourceFault::none && !thrown;
    }

    const NextPiece& utf8;
    std::vector<uint8_t> piece;
    size_t used = 0;
};

struct Releases {
    void operator()(IUnknown* object) const
    {
        object->Release();
    }
};
template <class Object>
using Owned = std::unique_ptr<Object, Releases>;

struct XmlLite {
    using CreateReader = HRESULT(WINAPI*)(REFIID, void**, IMalloc*);
    using CreateInput = HRESULT(WINAPI*)(IUnknown*, IMalloc*, LPCWSTR, BOOL, LPCWSTR, IXmlReaderInput**);

    HMODULE library = LoadLibraryExW(L"xmllite.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    CreateReader createReader = find<CreateReader>("CreateXmlReader");
    CreateInput createInput = find<CreateInput>("CreateXmlReaderInputWithEncodingName");

    template <class Function>
    Function find(const char* name) const
    {
        return library ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name))) : nullptr;
    }
};

// The reader and its input, which both know the stream.
struct Reader {
    Owned<IXmlReader> reader;
    Owned<IUnknown> input;
};

Reader makeReader(Stream& stream)
{
    static const XmlLite xmlLite;
    Reader made;
    void* object = nullptr;
    IXmlReaderInput* input = nullptr;
    if (!xmlLite.createReader || !xmlLite.createInput ||
        FAILED(xmlLite.createReader(__uuidof(IXmlReader), &object, nullptr)))
        return made;
    made.reader.reset(static_cast<IXmlReader*>(object));
    if (FAILED(xmlLite.createInput(&stream, nullptr, L"UTF-8", FALSE, nullptr, &input)))
        return {};
    made.input.reset(input);
    if (FAILED(made.reader->SetInput(input)))
        return {};
    return made;
}

template <HRESULT (STDMETHODCALLTYPE IXmlReader::*get)(LPCWSTR*, UINT*)>
std::string textOf(IXmlReader& reader)
{
    LPCWSTR text = nullptr;
    UINT length = 0;
    if (FAILED((reader.*get)(&text, &length)) || !text)
        return {};
    return narrow({text, length});
}

struct OwnedAttribute {
    std::string name, value;
};

XmlResult startElement(IXmlReader& reader, XmlEvents& events, size_t& depth)
{
    std::string name = textOf<&IXmlReader::GetLocalName>(reader);
    bool isEmpty = reader.IsEmptyElement() != FALSE;
    if (depth + 1 > deepestXml)
        return XmlResult::tooDeep;
    std::vector<OwnedAttribute> owned;
    for (HRESULT found = reader.MoveToFirstAttribute(); found == S_OK; found = reader.MoveToNextAttribute()) {
        std::string prefix = textOf<&IXmlReader::GetPrefix>(reader);
        std::string local = textOf<&IXmlReader::GetLocalName>(reader);
        if (prefix != "xmlns" && local != "xmlns")
            owned.push_back({local, textOf<&IXmlReader::GetValue>(reader)});
    }
    if (owned.size() > mostAttributes)
        return XmlResult::tooManyAttributes;
    std::vector<XmlAttribute> attributes;
    attributes.reserve(owned.size());
    for (const OwnedAttribute& attribute : owned)
        attributes.push_back({attribute.name, attribute.value});
    events.onStart(name, attributes);
    if (isEmpty)
        events.onEnd(name);
    else
        ++depth;
    return XmlResult::ok;
}

XmlResult takeNode(IXmlReader& reader, XmlNodeType node, XmlEvents& events, size_t& depth)
{
    switch (node) {
    case XmlNodeType_Element:
        return startElement(reader, events, depth);
    case XmlNodeType_EndElement:
        --depth;
        events.onEnd(textOf<&IXmlReader::GetLocalName>(reader));
        return XmlResult::ok;
    case XmlNodeType_Text:
    case XmlNodeType_CDATA:
        events.onText(textOf<&IXmlReader::GetValue>(reader));
        return XmlResult::ok;
    case XmlNodeType_DocumentType:
        return XmlResult::doctype;
    default:
        return XmlResult::ok;
    }
}

XmlResult faultOf(HRESULT result, const Stream& stream)
{
    if (stream.fault != SourceFault::none)
        return XmlResult::sourceFault;
    return result == static_cast<HRESULT>(WC_E_DTDPROHIBITED) ? XmlResult::doctype : XmlResult::notWellFormed;
}

} // namespace

XmlResult readXml(const NextPiece& utf8, XmlEvents& events, SourceFault& fault)
{
    Stream stream(utf8);
    Reader made = makeReader(stream);
    if (!made.reader)
        return XmlResult::noParser;
    size_t depth = 0;
    for (;;) {
        XmlNodeType node = XmlNodeType_None;
        HRESULT result = made.reader->Read(&node);
        fault = stream.fault;
        if (stream.thrown)
            std::rethrow_exception(stream.thrown);
        if (result == E_OUTOFMEMORY)
            throw std::bad_alloc();
        if (FAILED(result))
            return faultOf(result, stream);
        if (result == S_FALSE) // the end of the input
            return depth == 0 ? XmlResult::ok : XmlResult::notWellFormed;
        if (XmlResult taken = takeNode(*made.reader, node, events, depth); taken != XmlResult::ok)
            return taken;
    }
}

} // namespace torvane
