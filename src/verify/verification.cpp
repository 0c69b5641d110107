#include "verify/verification.h"

#include "verify/verifiers.h"

#include <algorithm>
#include <utility>

namespace tamrix {

verify_routine verifier_of(std::string_view format)
{
    constexpr std::pair<std::string_view, verify_routine> all[] = {
        {"binary", verify_binary},       {"intel", verify_intel},   {"motorola", verify_motorola},
        {"tektronix", verify_tektronix}, {"holtek", verify_holtek}, {"emc", verify_emc},
        {"intel16", verify_intel16},     {"texas", verify_texas},
    };
    const auto* const one = std::ranges::find(all, format, &std::pair<std::string_view, verify_routine>::first);
    return one == std::end(all) ? nullptr : one->second;
}

}  // namespace tamrix
