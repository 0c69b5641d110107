#include "sim_bench.h"

#include "channel/model.h"
#include "sim/test_board.h"

#include <filesystem>
#include <utility>

namespace tamrix::tests {

namespace {

constexpr int modules = 4;

bool has_modules(const situation& where) { return hw::model_of(where.model).self_test_form == "pinnote204"; }

void insert_test_boards(sim::programmer& made, const situation& where)
{
    for (int module = has_modules(where) ? modules : 0; module >= (has_modules(where) ? 1 : 0); --module)
        made.insert(std::make_unique<sim::test_board>(sim::wiring{where.model}), module);
}

/// Any bytes do for a simulated FPGA.
void write_image(const temp_folder& folder)
{
    std::vector<std::uint8_t> image(24576 + 100);
    for (std::size_t i = 0; i < image.size(); ++i) image[i] = static_cast<std::uint8_t>(i * 7 + 3);
    std::filesystem::create_directory(folder.path("lib1"));
    folder.write("lib1/ruvoio1.bin", std::span<const std::uint8_t>{image});
}

}  // namespace

std::string name_of(const situation& where)
{
    std::string name = "model " + std::to_string(where.model) + (where.usb ? " usb" : " registers");
    if (where.generation != 0) name += " gen" + std::to_string(where.generation);
    for (const std::string& fault : where.faults) name += ": " + fault;
    return name;
}

sim_bench::sim_bench(const situation& where) : faults_{where.faults}
{
    session.blocks.modeltype(0) = where.model;
    session.blocks.wfig(1) = static_cast<std::uint8_t>(where.generation);
    session.blocks.usbable(0) = where.usb ? bool16_true : bool16{0};
    session.syspath = host_folder.path("");
    if (where.image && has_modules(where)) write_image(host_folder);
    const sim::setup wanted{.model = where.model,
                            .generation = where.generation,
                            .memory_banks = where.memory_banks,
                            .time = time,
                            .log = log};
    const auto prepare = [this, where](sim::programmer& made) {
        hardware = &made;
        if (where.test_board) insert_test_boards(made, where);
        made.add_faults(faults_);
    };
    session.hardware.source = sim::source_of(wanted, prepare);
    if (where.transcript) session.hardware.source = with_transcript(session.hardware.source, transcript);
    variables.selftest.random_start = [] { return 1U; };
    variables.selftest.on_event = [this, writes = where.events](const selftest_event& event) {
        if (writes) transcript.push_back(line_of(event));
        if (event.what == selftest_event::kind::status && event.panel == 1) last_status_ = event.text;
        if (event.text.starts_with("Error!")) errors.push_back(event.text);
        waits_ = event.what == selftest_event::kind::wait;
    };
    shell.on_doevents = [this] {
        time->advance(std::chrono::milliseconds{20});
        shell.advance(std::chrono::duration<double>(time->now()).count() - shell.seconds());
        if (std::exchange(waits_, false)) at_wait();
    };
}

void sim_bench::replace_programmer(std::vector<std::string> faults)
{
    session.hardware.forget();
    hardware = nullptr;
    faults_ = std::move(faults);
    errors.clear();
}

std::vector<std::string> sim_bench::hazards()
{
    if (hardware != nullptr) hardware->check_idle();
    std::vector<std::string> texts;
    for (const sim::event& one : log->hazards()) texts.push_back(one.text);
    return texts;
}

}  // namespace tamrix::tests
