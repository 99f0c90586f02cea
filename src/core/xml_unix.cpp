#include "core/xml.h"

#include <expat.h>

#include <exception>
#include <memory>
#include <vector>

namespace torvane {

namespace {

constexpr char nameSeparator = '\n'; // between the address of a namespace and the name in it

struct Parse {
    XmlEvents& events;
    XML_Parser parser = nullptr;
    XmlResult result = XmlResult::ok;
    std::exception_ptr thrown = nullptr; // no exception may pass through the parser
    size_t depth = 0;
    std::vector<XmlAttribute> attributes = {};

    void stop(XmlResult why)
    {
        result = why;
        XML_StopParser(parser, XML_FALSE);
    }

    template <class Event>
    void call(Event event)
    {
        if (result != XmlResult::ok || thrown)
            return;
        try {
            event();
        } catch (...) {
            thrown = std::current_exception();
            XML_StopParser(parser, XML_FALSE);
        }
    }
};

std::string_view localName(const char* name)
{
    std::string_view whole = name;
    size_t separator = whole.rfind(nameSeparator);
    return separator == std::string_view::npos ? whole : whole.substr(separator + 1);
}

void onStart(void* data, const char* name, const char** values)
{
    Parse& parse = *static_cast<Parse*>(data);
    parse.call([&] {
        if (++parse.depth > deepestXml)
            return parse.stop(XmlResult::tooDeep);
        parse.attributes.clear();
        for (; *values; values += 2)
            parse.attributes.push_back({localName(values[0]), values[1]});
        if (parse.attributes.size() > mostAttributes)
            return parse.stop(XmlResult::tooManyAttributes);
        parse.events.onStart(localName(name), parse.attributes);
    });
}

void onEnd(void* data, const char* name)
{
    Parse& parse = *static_cast<Parse*>(data);
    --parse.depth;
    parse.call([&] { parse.events.onEnd(localName(name)); });
}

void onText(void* data, const char* text, int length)
{
    Parse& parse = *static_cast<Parse*>(data);
    parse.call([&] { parse.events.onText({text, static_cast<size_t>(length)}); });
}

void onDoctype(void* data, const char*, const char*, const char*, int)
{
    static_cast<Parse*>(data)->stop(XmlResult::doctype);
}

} // namespace

XmlResult readXml(const NextPiece& utf8, XmlEvents& events, SourceFault& fault)
{
    Parse parse{events};
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreateNS("UTF-8", nameSeparator),
                                                                        XML_ParserFree);
    if (!parser)
        throw std::bad_alloc();
    parse.parser = parser.get();
    XML_SetUserData(parse.parser, &parse);
    XML_SetElementHandler(parse.parser, onStart, onEnd);
    XML_SetCharacterDataHandler(parse.parser, onText);
    XML_SetStartDoctypeDeclHandler(parse.parser, onDoctype);
    std::vector<uint8_t> piece;
    do {
        fault = utf8(piece);
        if (fault != SourceFault::none)
            return XmlResult::sourceFault;
        bool isLast = piece.empty();
        XML_Status status = XML_Parse(parse.parser, reinterpret_cast<const char*>(piece.data()),
                                      static_cast<int>(piece.size()), isLast);
        if (parse.thrown)
            std::rethrow_exception(parse.thrown);
        if (parse.result != XmlResult::ok)
            return parse.result;
        if (status == XML_STATUS_ERROR && XML_GetErrorCode(parse.parser) == XML_ERROR_NO_MEMORY)
            throw std::bad_alloc();
        if (status == XML_STATUS_ERROR)
            return XmlResult::notWellFormed;
    } while (!piece.empty());
    return XmlResult::ok;
}

} // namespace torvane
