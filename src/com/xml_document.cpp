#include "com/xml_document.h"

#include <shlwapi.h>

#include "com/error.h"
#include "com/error_text.h"
#include "com/handle.h"
#include "com/text.h"
#include "com/variant.h"

namespace quillon::com {

namespace {

constexpr CLSID kDocument60 = {
    0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};
constexpr CLSID kDocument30 = {
    0xF5078F32, 0xC551, 0x11D3, {0x89, 0xB9, 0x00, 0x00, 0xF8, 0x1F, 0xE2, 0x21}};

std::wstring FaultText(HRESULT result) {
    const std::wstring text = SystemText(result);
    return text.empty() ? L"The file cannot be read." : text;
}

// The whole file as an array of bytes.
HRESULT ReadBytes(const std::wstring& path, Variant& bytes) {
    const Handle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.Get(), &size)) return HRESULT_FROM_WIN32(GetLastError());
    if (static_cast<unsigned long long>(size.QuadPart) > kLargestXmlFile)
        return HRESULT_FROM_WIN32(ERROR_FILE_TOO_LARGE);
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(size.QuadPart));
    if (!array) return E_OUTOFMEMORY;
    bytes.vt = VT_ARRAY | VT_UI1;
    bytes.parray = array;
    DWORD read = 0;
    if (!ReadFile(file.Get(), array->pvData, static_cast<DWORD>(size.QuadPart), &read, nullptr))
        return HRESULT_FROM_WIN32(GetLastError());
    return read == size.QuadPart ? S_OK : HRESULT_FROM_WIN32(ERROR_HANDLE_EOF);
}

XmlLoad ParseFault(IXMLDOMDocument2* document) {
    XmlLoad outcome;
    Ptr<IXMLDOMParseError> fault;
    Bstr reason;
    Bstr excerpt;
    if (SUCCEEDED(document->get_parseError(fault.Out())) && fault) {
        fault->get_reason(reason.Out());
        fault->get_srcText(excerpt.Out());
    }
    outcome.reason = reason.Text();
    outcome.excerpt = excerpt.Text();
    return outcome;
}

// To a stream, for the DOM itself would take the path for a URL.
HRESULT WriteDocument(IXMLDOMDocument2* document, const std::wstring& path) {
    Ptr<IStream> stream;
    const HRESULT opened =
        SHCreateStreamOnFileEx(path.c_str(), STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE,
                               FILE_ATTRIBUTE_NORMAL, TRUE, nullptr, stream.Out());
    if (FAILED(opened)) return opened;
    Variant target;
    target.vt = VT_UNKNOWN;
    target.punkVal = Ptr<IStream>(stream).Detach();
    const HRESULT saved = document->save(target);
    return FAILED(saved) ? saved : stream->Commit(STGC_DEFAULT);
}

void Demand(HRESULT result) {
    Check(NoShortage(result));
}

bool HasDocumentType(IXMLDOMDocument2* document) {
    Ptr<IXMLDOMDocumentType> type;
    return document->get_doctype(type.Out()) == S_OK && type;
}

}  // namespace

Ptr<IXMLDOMDocument2> NewXmlDocument() {
    Ptr<IXMLDOMDocument2> document;
    HRESULT made = CoCreateInstance(kDocument60, nullptr, CLSCTX_INPROC_SERVER,
                                    __uuidof(IXMLDOMDocument2), document.OutVoid());
    if (FAILED(made)) {
        Check(CoCreateInstance(kDocument30, nullptr, CLSCTX_INPROC_SERVER,
                               __uuidof(IXMLDOMDocument2), document.OutVoid()));
        Check(document->setProperty(Bstr(L"SelectionLanguage").Get(), Variant(L"XPath")));
    }
    document->put_async(VARIANT_FALSE);
    document->put_validateOnParse(VARIANT_FALSE);
    document->put_resolveExternals(VARIANT_FALSE);
    // Version 3 does not know this one; a document type is looked for after loading in any case.
    document->setProperty(Bstr(L"ProhibitDTD").Get(), Variant(true));
    return document;
}

XmlLoad LoadXmlFile(IXMLDOMDocument2* document, const std::wstring& path) {
    // The bytes are read here because the DOM itself would take a path for a URL: unescape "%20" in
    // it, or fetch "http:". Not a stream: a DOM that gathers one piece by piece needs time that
    // grows with the square of the size.
    Variant source;
    if (const HRESULT read = ReadBytes(path, source); FAILED(read))
        return {false, FaultText(read), {}};
    VARIANT_BOOL succeeded = VARIANT_FALSE;
    const HRESULT loaded = document->load(source, &succeeded);
    if (FAILED(loaded)) return {false, FaultText(loaded), {}};
    if (!succeeded) return ParseFault(document);
    if (HasDocumentType(document))
        return {false, L"A document type declaration is not allowed.", {}};
    return {true, {}, {}};
}

// A name in the same folder that no file has yet.
std::wstring NameBeside(const std::wstring& path) {
    std::wstring name = path + L".new";
    for (int number = 1; GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES; ++number)
        name = path + L".new" + std::to_wstring(number);
    return name;
}

void SaveXmlFile(IXMLDOMDocument2* document, const std::wstring& path) {
    const std::wstring beside = NameBeside(path);
    HRESULT saved = path.empty() ? E_INVALIDARG : WriteDocument(document, beside);
    if (SUCCEEDED(saved) && !MoveFileExW(beside.c_str(), path.c_str(),
                                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        saved = HRESULT_FROM_WIN32(GetLastError());
    if (FAILED(saved) && !path.empty()) DeleteFileW(beside.c_str());
    Check(saved);
}

Ptr<IXMLDOMNode> FindNode(IXMLDOMNode* from, const wchar_t* path) {
    Ptr<IXMLDOMNode> found;
    Demand(from->selectSingleNode(Bstr(path).Get(), found.Out()));
    return found;
}

Ptr<IXMLDOMNode> FirstChild(IXMLDOMNode* node) {
    Ptr<IXMLDOMNode> child;
    if (NoShortage(node->get_firstChild(child.Out())) != S_OK) return nullptr;
    return child;
}

Ptr<IXMLDOMNode> NextSibling(IXMLDOMNode* node) {
    Ptr<IXMLDOMNode> next;
    if (NoShortage(node->get_nextSibling(next.Out())) != S_OK) return nullptr;
    return next;
}

std::optional<std::wstring> FirstChildText(IXMLDOMNode* node) {
    const Ptr<IXMLDOMNode> child = FirstChild(node);
    if (!child) return std::nullopt;
    Variant value;
    if (FAILED(NoShortage(child->get_nodeValue(&value))) || value.vt != VT_BSTR)
        return std::nullopt;
    return Text(value.bstrVal);
}

std::wstring LocalName(IXMLDOMNode* node) {
    Bstr name;
    NoShortage(node->get_baseName(name.Out()));
    return name.Text();
}

Ptr<IXMLDOMElement> AppendElement(IXMLDOMDocument2* document, IXMLDOMNode* parent,
                                  const wchar_t* name) {
    Ptr<IXMLDOMElement> element;
    Demand(document->createElement(Bstr(name).Get(), element.Out()));
    Demand(parent->appendChild(element.Get(), nullptr));
    return element;
}

void AppendText(IXMLDOMDocument2* document, IXMLDOMNode* parent, const wchar_t* name,
                const std::wstring& text) {
    Demand(AppendElement(document, parent, name)->put_text(Bstr(text).Get()));
}

}  // namespace quillon::com
