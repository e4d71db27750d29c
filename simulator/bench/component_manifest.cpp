#include "component_manifest.h"

#include "com/error.h"
#include "com/module.h"
#include "host.h"
#include "output.h"

namespace quorvex::bench {
namespace {

bool Exists(const std::wstring& file) {
    return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// A start menu entry names the manifest without a folder: it lies beside the program.
std::wstring PathOf(const std::wstring& file) {
    const std::wstring beside = com::ModuleFolder() + L"\\" + file;
    return !Exists(file) && Exists(beside) ? beside : FullPath(file);
}

}  // namespace

ComponentManifest::ComponentManifest(const std::wstring& file) {
    const std::wstring path = PathOf(file);
    const std::wstring folder = path.substr(0, path.find_last_of(L'\\'));
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
    description.lpSource = path.c_str();
    description.lpAssemblyDirectory = folder.c_str();
    m_context = CreateActCtxW(&description);
    if (m_context == INVALID_HANDLE_VALUE) {
        throw Failure{L"the manifest " + path + L" cannot be used: " +
                      CodeText(HRESULT_FROM_WIN32(GetLastError()))};
    }
    if (!ActivateActCtx(m_context, &m_cookie)) {
        ReleaseActCtx(m_context);
        throw Failure{L"the manifest " + path + L" cannot be activated"};
    }
}

ComponentManifest::~ComponentManifest() {
    DeactivateActCtx(0, m_cookie);
    ReleaseActCtx(m_context);
}

}  // namespace quorvex::bench
