// The platform's XML DOM: version 6 by its class identifier, version 3 where 6 is missing.
#pragma once

#include <optional>
#include <string>

#include "com/platform.h"
//
#include <msxml2.h>

#include "com/ptr.h"

__CRT_UUID_DECL(IXMLDOMNode, 0x2933BF80, 0x7B36, 0x11D2, 0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E,
                0x60)
__CRT_UUID_DECL(IXMLDOMDocument2, 0x2933BF95, 0x7B36, 0x11D2, 0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98,
                0x3E, 0x60)

namespace quillon::com {

// Largest file that is parsed, in bytes; a larger one could not be held by a 32-bit process.
inline constexpr unsigned long long kLargestXmlFile = 256ull << 20;

// An empty document: loads synchronously, validates nothing, fetches nothing, finds by XPath.
// Throws Error when the machine has no XML DOM.
Ptr<IXMLDOMDocument2> NewXmlDocument();

struct XmlLoad {
    bool loaded = false;
    std::wstring reason;   // in words, when not loaded
    std::wstring excerpt;  // of the source text at the fault, where the parser gives one
};

// Parses a file of this machine; never a URL. A document type declaration makes it fail, so no
// entity is ever expanded. Does not throw for what is in the file.
XmlLoad LoadXmlFile(IXMLDOMDocument2* document, const std::wstring& path);

// Writes the document beside the file and then puts it in its place: the old file stays whole when
// that fails. Throws Error.
void SaveXmlFile(IXMLDOMDocument2* document, const std::wstring& path);

// The first node in document order that a fixed XPath expression finds; empty when there is none.
Ptr<IXMLDOMNode> FindNode(IXMLDOMNode* from, const wchar_t* path);

// A node's children in turn; empty behind the last. Both throw std::bad_alloc alone.
Ptr<IXMLDOMNode> FirstChild(IXMLDOMNode* node);
Ptr<IXMLDOMNode> NextSibling(IXMLDOMNode* node);

// The value of a node's first child, whatever kind of node that is and whatever follows it. nullopt
// when there is no child or it has no value of its own (an element).
std::optional<std::wstring> FirstChildText(IXMLDOMNode* node);

// Name without prefix; empty for a node that has none.
std::wstring LocalName(IXMLDOMNode* node);

// Adds an element at the end of the parent.
Ptr<IXMLDOMElement> AppendElement(IXMLDOMDocument2* document, IXMLDOMNode* parent,
                                  const wchar_t* name);
// Adds an element with a text.
void AppendText(IXMLDOMDocument2* document, IXMLDOMNode* parent, const wchar_t* name,
                const std::wstring& text);

}  // namespace quillon::com
