#include "plugin/process_state.h"

namespace quillon {

ProcessState& Process() {
    static ProcessState state;
    return state;
}

}  // namespace quillon
