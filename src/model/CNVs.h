// The network variables of an application file.
#pragma once

#include "model/CNV.h"
#include "model/RecordList.h"

namespace quillon {

class CNVs final : public RecordList<CNVs, _CNVs, CNV> {
public:
    static inline const CLSID& kClass = ::CLSID_CNVs;
};

}  // namespace quillon
