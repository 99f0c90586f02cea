// XML as events, by the system's own parser: expat on Linux, XmlLite on Windows. Nothing is fetched and no entity is
// expanded beyond the five of XML itself: a document with a DOCTYPE is refused where it stands.
#pragma once

#include "core/byte_source.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace torvane {

struct XmlAttribute {
    std::string_view name; // without prefix
    std::string_view value;
};

// What is called while a document is read. Names come without their prefixes; texts in one or several pieces.
class XmlEvents {
public:
    virtual ~XmlEvents() = default;
    virtual void onStart(std::string_view name, std::span<const XmlAttribute> attributes) = 0;
    virtual void onText(std::string_view text) = 0;
    virtual void onEnd(std::string_view name) = 0;
};

enum class XmlResult {
    ok,
    sourceFault,   // the bytes could not be had; which one it was, stands beside
    notWellFormed, // by the rules of XML and its namespaces, or cut off
    doctype,
    tooDeep,           // elements within elements
    tooManyAttributes, // of one element
    noParser,          // Windows without its XML parser
};

constexpr size_t deepestXml = 100;    // elements
constexpr size_t mostAttributes = 64; // of an element

// Reads a document to its end, or to the first fault. Up to that all events have come. What an event throws goes to the
// caller.
XmlResult readXml(const NextPiece& utf8, XmlEvents& events, SourceFault& fault);

} // namespace torvane
