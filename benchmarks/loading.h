// Loading an application file by the plug-in, as several measures time it.
#pragma once

#include <string>

#include "session.h"

namespace quillon::benchmarks {

// Seconds that one FriendSet on a new profile takes. The profile stays with the caller, so that
// letting go of it is no part of the time. Throws std::exception when the file is refused.
double SecondsOfLoading(const Session& session, const Room& room, const std::wstring& file,
                        com::Ptr<_CProfile>& profile);

// The same, with the profile let go of afterwards.
double SecondsOfLoading(const Session& session, const Room& room, const std::wstring& file);

}  // namespace quillon::benchmarks
