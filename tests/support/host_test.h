// The fixture of the host tests: a fresh copy of the plug-in in a folder of the test's own, a
// network, and at the end the proof that nothing is left alive.
#pragma once

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/host_network.h"
#include "support/host_objects.h"
#include "support/host_session.h"
#include "support/message_boxes.h"

namespace quillon::test {

// The plug-in's device object of one room controller, by its three faces.
struct Room {
    std::wstring neuron;
    com::Ptr<IDevice> device;
    com::Ptr<IDeviceEx> ex;
    com::Ptr<_CDevice> own;

    // Lets go of the object.
    void Drop() {
        device.Reset();
        ex.Reset();
        own.Reset();
    }
};

class HostTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    Library& Plugin() { return *m_plugin; }
    // The folder of the plug-in's copy, without a backslash at the end.
    const std::wstring& Folder() const { return m_folder; }
    std::wstring InFolder(std::wstring_view name) const;
    // Writes the settings file of a program ID; lines such as "DownLoadCPs=1".
    void WriteSettings(const std::string& lines, std::string_view programId = kSmallProgramId);
    // Lets go of all rooms, and loads the plug-in again, with its process-wide state as new.
    void ReloadPlugin();

    // Opens a network; the one before is let go, rooms are not.
    void Open(const Json& network);
    void OpenSmall() { Open(SmallNetwork()); }
    // A device object of the plug-in bound to a room controller. The log is empty afterwards.
    Room& AddRoom(std::wstring_view neuron);
    void DropRooms() { m_rooms.clear(); }
    // The host's own device object of a room controller.
    com::Ptr<IDevice> HostDevice(std::wstring_view neuron);
    INetwork* Network() { return m_network.Get(); }

    // The network as it now is; asks no member of the host's devices.
    Json Saved();
    std::wstring StateOf(std::wstring_view neuron);
    std::wstring FileValue(std::wstring_view neuron, std::string_view id);
    // Of the network variable, or configuration property, with this index.
    std::wstring VariableRaw(std::wstring_view neuron, int index);
    std::wstring PropertyRaw(std::wstring_view neuron, int index);

    MessageBoxes& Boxes() { return *m_boxes; }
    Poster& Posted() { return *m_poster; }
    // The test provokes what the host refuses as misuse.
    void AllowMisuse() { m_misuseAllowed = true; }

private:
    void LoadPlugin();
    void UnloadPlugin();

    std::wstring m_folder;
    std::unique_ptr<Library> m_plugin;
    std::unique_ptr<MessageBoxes> m_boxes;
    std::unique_ptr<Poster> m_poster;
    com::Ptr<INetwork> m_network;
    std::list<Room> m_rooms;
    std::vector<std::wstring> m_windows;
    bool m_misuseAllowed = false;
};

// The texts of an object; a failure is a com::Error.
template <class I>
std::wstring TextOf(const com::Ptr<I>& object, HRESULT (STDMETHODCALLTYPE I::*member)(BSTR*)) {
    com::Bstr text;
    com::Check((object.Get()->*member)(text.Out()));
    return text.Text();
}

// Closes the dialogs of this thread as the operator does, the splash window included.
void CloseAllWindows();

// Gives a room's file names to the plug-in and lets it work; the results are checked.
void Download(const Room& room, const std::wstring& path);
void Export(const Room& room, const std::wstring& path);

}  // namespace quillon::test
