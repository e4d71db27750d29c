#include "files.h"

#include "refusal.h"
#include "sequence.h"

namespace quorvex {

namespace {

class Entry final : public Hosted<com::Dual<IFile>, com::ErrorInfoSupport> {
public:
    Entry(std::shared_ptr<RoomController> controller, std::size_t position)
        : m_controller(std::move(controller)), m_position(position) {}

    STDMETHODIMP get_Identifier(long* identifier) override {
        return Answer(Id("IFile.Identifier.get"), identifier, [&] { return Own().identifier; });
    }

    STDMETHODIMP get_ValueText(BSTR* text) override {
        return Answer(Id("IFile.ValueText.get"), text,
                      [&] { return RawText(m_controller->ReadFile(m_position)); });
    }

    STDMETHODIMP put_ValueText(BSTR text) override {
        return Do(
            Id("IFile.ValueText.put"), [&] { Write(com::View(text)); }, text);
    }

    STDMETHODIMP get_Address(long* address) override {
        return Answer(Id("IFile.Address.get"), address, [&] { return Own().address; });
    }

private:
    const FileEntry& Own() const { return m_controller->Files()[m_position]; }

    void Write(std::wstring_view text) {
        auto bytes = BytesFromRawText(text);
        if (!bytes)
            RefuseMisuse(L"Entry " + Own().id + L" was given \"" + std::wstring(text) +
                         L"\", which is not hexadecimal");
        if (!m_controller->IsPresent())
            Calls::Process().NoteMisuse(L"Entry " + Own().id + L" was written while device " +
                                        m_controller->neuron + L" is absent");
        m_controller->WriteFile(m_position, std::move(*bytes));
    }

    std::shared_ptr<RoomController> m_controller;
    std::size_t m_position;
};

class Files final : public Hosted<com::Dual<IFiles>, com::ErrorInfoSupport> {
public:
    explicit Files(std::shared_ptr<RoomController> controller)
        : m_controller(std::move(controller)) {}

    STDMETHODIMP get__NewEnum(IUnknown** enumerator) override {
        return Answer(Id("IFiles._NewEnum.get"), enumerator, [&] {
            return com::Make<Sequence>(Size(), [controller = m_controller](std::size_t position) {
                return com::Ptr<IDispatch>(com::Make<Entry>(controller, position).Get());
            });
        });
    }

    STDMETHODIMP get_Item(long index, IFile** entry) override {
        return Answer(
            Id("IFiles.Item"), entry,
            [&] {
                if (index < 1 || static_cast<std::size_t>(index) > Size())
                    Refuse(DISP_E_BADINDEX, L"There is no file entry " + std::to_wstring(index));
                return com::Make<Entry>(m_controller, static_cast<std::size_t>(index - 1));
            },
            index);
    }

    STDMETHODIMP get_Count(long* count) override {
        return Answer(Id("IFiles.Count.get"), count, [&] { return static_cast<long>(Size()); });
    }

private:
    std::size_t Size() const { return m_controller->Files().size(); }

    std::shared_ptr<RoomController> m_controller;
};

}  // namespace

com::Ptr<IFiles> MakeFiles(std::shared_ptr<RoomController> controller) {
    return com::Ptr<IFiles>::Adopt(com::Make<Files>(std::move(controller)).Detach());
}

}  // namespace quorvex
