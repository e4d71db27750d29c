#include "loading.h"

#include <stdexcept>

#include "com/error.h"
#include "com/text.h"
#include "timing.h"

namespace quillon::benchmarks {

double SecondsOfLoading(const Session& session, const Room& room, const std::wstring& file,
                        com::Ptr<_CProfile>& profile) {
    profile = session.Create<_CProfile>(CLSID_CProfile);
    const com::Bstr path(file);
    com::Ptr<_CDevice> device = room.subject.As<_CDevice>();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    const double seconds =
        Seconds([&] { com::Check(profile->FriendSet(path.Get(), device.InOut(), &loaded)); });
    if (!loaded) throw std::runtime_error("the profile refuses an exported file");
    return seconds;
}

double SecondsOfLoading(const Session& session, const Room& room, const std::wstring& file) {
    com::Ptr<_CProfile> profile;
    return SecondsOfLoading(session, room, file, profile);
}

}  // namespace quillon::benchmarks
