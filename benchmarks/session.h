// Both DLLs at work in a folder of their own, with nothing registered.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "com/platform.h"
#include "com/ptr.h"
#include "quillon_h.h"
#include "quorvexsim_h.h"
#include "room_network.h"

namespace quillon::benchmarks {

// A room controller seen from both sides, as the plug-in's device and as a device of the host's
// own.
struct Room {
    com::Ptr<INetwork> network;
    com::Ptr<IDevice> subject;
    com::Ptr<IDevice> bare;
};

// A DLL for as long as this lives; it is unloaded when its objects allow it.
class LoadedDll {
public:
    // Throws std::runtime_error.
    explicit LoadedDll(const std::filesystem::path& file);
    LoadedDll(const LoadedDll&) = delete;
    LoadedDll& operator=(const LoadedDll&) = delete;
    ~LoadedDll();

    com::Ptr<IClassFactory> Factory(REFCLSID clsid) const;

private:
    HMODULE m_module;
};

// COM on this thread, the DLLs copied out of the program's folder and loaded, the host's device
// class creatable. A folder of the system's temporary one holds all files and goes with the
// session.
class Session {
public:
    Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    const std::filesystem::path& Folder() const { return m_place.path; }
    // Control of the host.
    ISimulator& Host() const { return *m_host; }

    // An object of a class of the plug-in.
    template <class T>
    com::Ptr<T> Create(REFCLSID clsid) const {
        return Make<T>(m_plugin, clsid);
    }

    // A network of one new controller, and devices bound to it.
    Room OpenRoom(const RoomSize& size) const;
    // One more plug-in device for the controller.
    com::Ptr<IDevice> BindDevice(INetwork* network) const;
    // Writes the controller's application file by the plug-in's own export.
    std::wstring ExportApplication(const Room& room, const wchar_t* name) const;
    // How often the host's member was called since the last Clear.
    long Calls(const wchar_t* member) const;

private:
    struct Apartment {
        Apartment();
        ~Apartment();
    };
    struct Place {
        Place();
        ~Place();
        std::filesystem::path path;
    };
    struct ClassObject {
        ClassObject(REFCLSID clsid, IUnknown* factory);
        ~ClassObject();
        DWORD cookie = 0;
    };

    template <class T>
    static com::Ptr<T> Make(const LoadedDll& dll, REFCLSID clsid) {
        return CreateObject(dll, clsid).As<T>();
    }
    static com::Ptr<IUnknown> CreateObject(const LoadedDll& dll, REFCLSID clsid);

    Apartment m_apartment;
    Place m_place;
    LoadedDll m_hostDll;
    LoadedDll m_plugin;
    ClassObject m_hostClass;
    com::Ptr<ISimulator> m_host;
};

}  // namespace quillon::benchmarks
