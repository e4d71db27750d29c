#include "com/xml_document.h"

#include <shlwapi.h>

#include "com/error.h"
#include "com/text.h"
#include "com/variant.h"

namespace quillon::com {

namespace {

constexpr CLSID kDocument60 = {
    0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};
constexpr CLSID kDocument30 = {
    0xF5078F32, 0xC551, 0x11D3, {0x89, 0xB9, 0x00, 0x00, 0xF8, 0x1F, 0xE2, 0x21}};

std::wstring SystemText(HRESULT result) {
    const DWORD code = HRESULT_FACILITY(result) == FACILITY_WIN32
                           ? static_cast<DWORD>(HRESULT_CODE(result))
                           : static_cast<DWORD>(result);
    wchar_t text[512];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, code, 0, text, 512, nullptr);
    std::wstring message(text, length);
    while (!message.empty() && message.back() <= L' ') message.pop_back();
    return message.empty() ? L"The file cannot be read." : message;
}

HRESULT OpenStream(const std::wstring& path, Ptr<IStream>& stream) {
    WIN32_FILE_ATTRIBUTE_DATA file{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &file))
        return HRESULT_FROM_WIN32(GetLastError());
    if (file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        return HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
    const unsigned long long size =
        (static_cast<unsigned long long>(file.nFileSizeHigh) << 32) | file.nFileSizeLow;
    if (size > kLargestXmlFile) return HRESULT_FROM_WIN32(ERROR_FILE_TOO_LARGE);
    return SHCreateStreamOnFileEx(path.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, 0, FALSE,
                                  nullptr, stream.Out());
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
    Ptr<IStream> stream;
    // A stream is opened here because the DOM itself would take a path for a URL: unescape "%20" in
    // it, or fetch "http:".
    if (const HRESULT opened = OpenStream(path, stream); FAILED(opened))
        return {false, SystemText(opened), {}};
    Variant source;
    source.vt = VT_UNKNOWN;
    source.punkVal = stream.Detach();
    VARIANT_BOOL succeeded = VARIANT_FALSE;
    const HRESULT loaded = document->load(source, &succeeded);
    if (FAILED(loaded)) return {false, SystemText(loaded), {}};
    if (!succeeded) return ParseFault(document);
    if (HasDocumentType(document))
        return {false, L"A document type declaration is not allowed.", {}};
    return {true, {}, {}};
}

void SaveXmlFile(IXMLDOMDocument2* document, const std::wstring& path) {
    const std::wstring beside = path + L".new";
    HRESULT saved = path.empty() ? E_INVALIDARG : WriteDocument(document, beside);
    if (SUCCEEDED(saved) && !MoveFileExW(beside.c_str(), path.c_str(),
                                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        saved = HRESULT_FROM_WIN32(GetLastError());
    if (FAILED(saved) && !path.empty()) DeleteFileW(beside.c_str());
    Check(saved);
}

Ptr<IXMLDOMNode> FindNode(IXMLDOMNode* from, const wchar_t* path) {
    Ptr<IXMLDOMNode> found;
    Check(from->selectSingleNode(Bstr(path).Get(), found.Out()));
    return found;
}

std::optional<std::wstring> FirstChildText(IXMLDOMNode* node) {
    Ptr<IXMLDOMNode> child;
    if (node->get_firstChild(child.Out()) != S_OK || !child) return std::nullopt;
    Variant value;
    if (FAILED(child->get_nodeValue(&value)) || value.vt != VT_BSTR) return std::nullopt;
    return Text(value.bstrVal);
}

std::wstring LocalName(IXMLDOMNode* node) {
    Bstr name;
    node->get_baseName(name.Out());
    return name.Text();
}

Ptr<IXMLDOMElement> AppendElement(IXMLDOMDocument2* document, IXMLDOMNode* parent,
                                  const wchar_t* name) {
    Ptr<IXMLDOMElement> element;
    Check(document->createElement(Bstr(name).Get(), element.Out()));
    Check(parent->appendChild(element.Get(), nullptr));
    return element;
}

void AppendText(IXMLDOMDocument2* document, IXMLDOMNode* parent, const wchar_t* name,
                const std::wstring& text) {
    Check(AppendElement(document, parent, name)->put_text(Bstr(text).Get()));
}

}  // namespace quillon::com
