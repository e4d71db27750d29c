// The configuration properties of an application file.
#pragma once

#include "model/CCP.h"
#include "model/RecordList.h"

namespace quillon {

class CCPs final : public RecordList<CCPs, _CCPs, CCP> {
public:
    static inline const CLSID& kClass = ::CLSID_CCPs;
};

}  // namespace quillon
