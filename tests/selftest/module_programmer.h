// A programmer of a unit with four modules for the tests of the self-test, around the small one, whose socket shows the
// pins of the module that a frame named last.
#pragma once

#include "selftest/pinnote204.h"
#include "selftest_bench.h"
#include "support/temp_files.h"

#include <array>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tamrix::tests {

struct module_state {
    std::vector<std::uint8_t> ram = std::vector<std::uint8_t>(16 * 32768);
    std::set<int> bad_blocks;               // their first byte is read wrong
    int starts_fpga_after = 0;              // so many whole images are taken before one starts; -1: none does
    bool test_board = false;                // in its socket
    std::vector<std::uint8_t> image;        // the last one that came whole
    int images = 0;                         // that came whole
    std::vector<std::int32_t> block_bytes;  // of the image blocks, all passes
    bool pulls_down = false;                // from its start on; a reset ends it, an image pulls up
};

struct programmer_modules {
    std::array<module_state, 5> slots;  // 1 to 4
    int named = 0;
    std::vector<std::pair<int, bool>> signals;  // module, passed
    int writes_until_refused = -1;              // so many frames and blocks of data are taken, then none
    int loads_until_lost = -1;                  // so many load steps of an image are answered, then none
    std::uint8_t load_answer = 170;
    int reads_until_lost = -1;  // so many bulk reads end, then none
    int taken = 0;              // frames and blocks of data so far

    /// Programmers with these modules. `unit` is the rest of them, `on_delay` gets the milliseconds of each delay.
    hw::programmer_source source(small_programmer& unit, std::function<void(int)> on_delay);
};

/// A dialog with that programmer, and an image in the host's folder.
struct unit_bench : selftest_bench {
    explicit unit_bench(std::int16_t model = 39, std::uint8_t wfig1 = 0, bool usb = true);

    programmer_modules modules;
    temp_folder host_folder;

    module_state& slot(int number) { return modules.slots[static_cast<std::size_t>(number)]; }
    /// Into "lib1" of the host's folder.
    void write_image(const std::vector<std::uint8_t>& bytes, const std::string& name = "ruvoio1.bin") const;
    void insert_test_boards();
    /// The texts of panel 1.
    lines statuses() const;
    int place_of(std::string_view line) const;

    /// Opens the dialog, chooses an option and presses Test; at each wait the person presses Continue or Stop. The
    /// transcript is that of the run alone.
    void run(int option = 0, bool go_on = true);
    /// What `steps` do with the dialog open; the transcript is theirs alone.
    template <class Steps>
    void with_dialog(const Steps& steps)
    {
        during<pinnote204>([&](pinnote204& dialog) {
            transcript.clear();
            steps(dialog);
        });
    }
};

}  // namespace tamrix::tests
