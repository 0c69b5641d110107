#include "ttl/run/vecttest.h"

#include "channel/model.h"
#include "messages/message_numbers.h"
#include "session/session.h"
#include "ttl/run/engines.h"
#include "ttl/run/prepare.h"
#include "ttl/run/row_report.h"

#include <algorithm>

namespace tamrix {

namespace {

constexpr std::int16_t most_rows = 101;  // plus one, as all row counts

void take_rows(ttl_variables& ttl, const pld_variables& pld, std::uint8_t mode,
               const std::vector<std::string>& editor_rows)
{
    for (std::size_t i = 0; i + 2 <= static_cast<std::size_t>(ttl.ttlcnt); ++i) {
        if (mode != 0) {
            ttl.ttlvect.store(i, pld.pldvect(i));
        } else {
            ttl.ttlvect.store(i, i < editor_rows.size() ? std::string_view{editor_rows[i]} : "");
        }
    }
}

/// Voltage and supply pins of the host's device.
void supply_by_device_data(session& plug_in, ttl_variables& ttl)
{
    auto& blocks = plug_in.blocks;
    hw::devobj& device = plug_in.hardware.device();
    device.boardsel(blocks.figmode(0));
    device.setvcc(std::int32_t{blocks.bvcc(0)} * 10);
    device.gndpin(blocks.bgndpin(0), 1);
    device.vccpin(blocks.bvccpin(0), 1);
    device.delayms(100);
    ttl.ttlpin = std::min<std::int16_t>(blocks.chippin(0), 40);
}

run_outcome run_engine(session& plug_in, ttl_variables& ttl, std::uint8_t mode)
{
    const auto engine = hw::model_of(plug_in.blocks.modeltype(0)).vector_positions == 40 ? runport40 : runport;
    return engine(plug_in, ttl, ttl.ttlcnt, ttl.ttlpin, 0, mode);
}

/// A communication error is reported like everything else: in a box, or in the host's log. That the test failed goes
/// into the log of the host in either case.
void tell_failure(session& plug_in, const ttl_variables& ttl, std::uint8_t mode)
{
    if (ttl.outcome.communication_failed()) {
        if (mode == 0) tell_communication_error(plug_in, message::ttl_and_cmos_test);
        if (mode != 0) plug_in.blocks.MainRtstr(0) += ">> " + plug_in.text(message::communication_error) + "\n";
    }
    plug_in.blocks.MainRtstr(0) += ">> " + plug_in.text(message::vector_test) + plug_in.text(message::fail) + "\n";
}

/// Tells of a pass; true where the person wants to test again.
bool again_after_pass(session& plug_in, std::uint8_t mode)
{
    if (mode != 0) {
        plug_in.blocks.MainRtstr(0) += ">> " + plug_in.text(message::vector_test_ok) + "\n";
        return false;
    }
    return plug_in.screen.box({.text = plug_in.text(message::vector_test_ok),
                               .title = plug_in.text(message::ttl_and_cmos_test),
                               .picture = forms::icon::information,
                               .buttons = forms::buttons_of_box::retry_cancel}) == forms::answer::retry;
}

}  // namespace

void vecttest(session& plug_in, ttl_variables& ttl, const pld_variables& pld, std::uint8_t mode,
              const std::vector<std::string>& editor_rows)
{
    ttl.outcome = {};
    if (!is_true(ttl.ok)) return;
    ttl.ttlcnt = std::min(ttl.ttlcnt, most_rows);
    if (ttl.ttlcnt < 2) return;
    take_rows(ttl, pld, mode, editor_rows);
    constexpr std::uint8_t powered_by_device_data = 1;
    do {
        const bool of_host = ttl.wnote == powered_by_device_data;
        const std::string tested = of_host ? std::string{} : ttl.ttlname;
        if (!prepare_supply(plug_in, ttl, ttl.ttlname)) return keep_test(ttl, tested);
        if (of_host) supply_by_device_data(plug_in, ttl);
        ttl.outcome = run_engine(plug_in, ttl, mode);
        keep_test(ttl, tested);
        if (ttl.outcome.ended_in_failure()) {
            tell_failure(plug_in, ttl, mode);
            break;
        }
    } while (again_after_pass(plug_in, mode));
    plug_in.hardware.device().hwrelease();
}

}  // namespace tamrix
