// The vectors of a programmable device, played on the chip in the socket as after programming.
#include "cli/fuse_files.h"
#include "cli/logic_test.h"
#include "host/device_preset.h"

#include <algorithm>

namespace tamrix::cli {

namespace {

constexpr std::int64_t most_pins = 40, most_fuses = 0x1000000, room_behind = 1000;
constexpr std::int64_t most_rows = 100;  // of one test

void load(attached_plug_in& plug_in, const std::string& jedec_file)
{
    const std::int64_t words = told_number(jedec_file, "QF", most_fuses).value_or(0);
    plug_in.blocks.value<std::int32_t>("tlength") = static_cast<std::int32_t>(words);
    plug_in.attach_buffer(static_cast<std::int32_t>(words + room_behind));
    std::string name = jedec_file;
    const reply outcome = plug_in.methods.readpldfile(name);
    if (!outcome.ok()) fail(outcome.error);
    const diagnostic& why_it_failed = plug_in.variables.transfer.why_it_failed;
    if (!why_it_failed.empty()) fail(why_it_failed.text());
    if (plug_in.variables.pld.pldvectcnt < 2) fail(jedec_file + ": no vectors in it");
}

}  // namespace

void vectors(const ttl_options& options, const std::string& jedec_file, console& con)
{
    attached_plug_in plug_in{options.language};
    const simulated_socket socket{plug_in, options.socket};
    load(plug_in, jedec_file);
    // The supply is in the corners, as on nearly all programmable devices, unless the chip in the socket says
    // otherwise.
    const package chip = socket.chip().value_or([&] {
        const auto pins = told_number(jedec_file, "QP", most_pins);
        if (!pins || *pins % 2 != 0) refuse(jedec_file + ": does not give its pin count (QP), and the socket is empty");
        return package{static_cast<int>(*pins), static_cast<int>(*pins), static_cast<int>(*pins) / 2};
    }());
    plug_in.blocks.value<std::int16_t>("chippin") = static_cast<std::int16_t>(chip.pins);
    plug_in.blocks.value<std::uint8_t>("bvccpin") = host::pin_code(chip.vcc_pin, chip.pins);
    plug_in.blocks.value<std::uint8_t>("bgndpin") = host::pin_code(chip.gnd_pin, chip.pins);
    plug_in.blocks.value<std::int16_t>("bvcc") = 500;  // in units of 10 mV
    const std::int64_t rows = plug_in.variables.pld.pldvectcnt - 1;
    std::uint8_t mode = 1, with_device_data = 1;
    auto count = static_cast<std::uint8_t>(std::min(rows, most_rows) + 1);
    bool16 ok = bool16_true;
    const reply outcome = plug_in.methods.vecttest0(mode, count, with_device_data, ok);
    con.status_lines(plug_in.take_status_text());
    socket.tell_hazards(con);
    if (!outcome.ok()) fail(outcome.error);
    if (rows > most_rows) con.note("the first 100 of " + std::to_string(rows) + " vectors were played");
    check_carried_out(jedec_file, plug_in, "no vectors in it");
    if (plug_in.variables.ttl.outcome.ended_in_failure()) fail(jedec_file + ": the chip in the socket fails");
}

}  // namespace tamrix::cli
