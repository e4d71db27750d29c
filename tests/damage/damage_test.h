// Hands damaged files of one kind to the plug-in, one after the other, and judges each.
#pragma once

#include <string>
#include <vector>

#include "damage/mutations.h"
#include "damage/random.h"
#include "support/host_test.h"

namespace quillon::test {

class DamageTest : public HostTest {
protected:
    void SetUp() override;

    // As many damaged files as the run is for, and good ones in between, which prove that nothing
    // has stayed. A file that fails is left beside this program, as is one that ends it.
    void RunAll(FileKind kind, const std::vector<std::string>& seeds);

    // Lets the plug-in take the file and judges what it does; gives the outcome in words.
    virtual std::string Take(const std::string& bytes, Random& random) = 0;
    // A good file works as if there had been no other.
    virtual void ExpectGoodWorks() = 0;

    // The device that files are for; a fresh one of a fresh network.
    Room& FreshRoom();
    // The plug-in and the host hold nothing any more but the network.
    void DropRoom();
    HMODULE Module() { return GetModuleHandleW(Plugin().Path().c_str()); }
    // The value text of a file entry of the device, read past the plug-in and past the log.
    std::wstring EntryText(long identifier);
    // The boxes that came up since the last call.
    std::vector<Box> NewBoxes();
    // Shows the device window; its timers stand still.
    HWND OpenWindow(const Room& room);

    static std::string Example(const char* name);

private:
    void RunOne(FileKind kind, const std::string& seed, std::uint32_t number);

    std::size_t m_boxesSeen = 0;
};

}  // namespace quillon::test
