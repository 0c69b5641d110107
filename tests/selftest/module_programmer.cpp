#include "module_programmer.h"

#include "support/forwarding_programmer.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <span>

namespace tamrix::tests {

namespace {

class with_modules final : public forwarding_programmer {
public:
    with_modules(std::unique_ptr<hw::programmer> inner, programmer_modules& modules, small_programmer& unit,
                 const hw::reply_memory& replies, std::function<void(int)> on_delay)
        : forwarding_programmer{std::move(inner)},
          m_{modules},
          unit_{unit},
          replies_{replies},
          on_delay_{std::move(on_delay)}
    {}

private:
    bool refuses()
    {
        ++m_.taken;
        return m_.writes_until_refused >= 0 && m_.taken > m_.writes_until_refused;
    }
    module_state& at(int slot) { return m_.slots.at(static_cast<std::size_t>(slot)); }

    std::int32_t usbcomwrite(const std::uint8_t* frame, std::int32_t length) override
    {
        if (refuses()) return 1;
        switch (frame[0]) {
        case 4: at(m_.named = frame[2]).pulls_down = false; return 0;
        case 236: at(m_.named = frame[2]).pulls_down = true; return 0;
        case 6: m_.signals.emplace_back(frame[8], frame[1] == 1); return 0;
        case 92: load_step(frame); return 0;
        case 10:
            if (bulk(frame)) return 0;
            break;
        case 5: m_.named = frame[15]; break;
        default: break;
        }
        return forwarding_programmer::usbcomwrite(frame, length);
    }

    /// True where it is not about the unit's own memory.
    bool bulk(const std::uint8_t* frame)
    {
        image_ = frame[3] == 3;
        if (image_ && frame[4] == 0) block_.clear();
        if (frame[4] != 170) return image_;
        m_.named = frame[8];
        passing_block_ = frame[1];
        return true;
    }

    void load_step(const std::uint8_t* frame)
    {
        const std::int32_t bytes = frame[2] << 16 | frame[3] << 8 | frame[4];
        module_state& module = at(m_.named);
        const auto at_block = static_cast<std::ptrdiff_t>(32768) * passing_block_;
        if (image_) {
            take_image_block(module, bytes);
        } else if (frame[1] == 0) {
            passages_.push_back({m_.named, at_block});
        } else {
            std::copy_n(module.ram.begin() + at_block, bytes, unit_.ram.begin() + at_block);
            if (module.bad_blocks.contains(passing_block_)) unit_.ram[static_cast<std::size_t>(at_block)] ^= 1;
        }
    }

    void take_image_block(module_state& module, std::int32_t bytes)
    {
        module.block_bytes.push_back(bytes);
        whole_ = whole_ && static_cast<std::int32_t>(block_.size()) == bytes;
        coming_.insert(coming_.end(), block_.begin(), block_.end());
        runs_ = false;
        if (bytes == 24576) return;
        module.image = std::exchange(coming_, {});
        runs_ =
            std::exchange(whole_, true) && module.starts_fpga_after >= 0 && module.images >= module.starts_fpga_after;
        ++module.images;
    }

    std::int32_t usbbulkwrite(const std::uint8_t* data, std::int32_t length) override
    {
        if (refuses()) return 1;
        if (image_) {
            block_.assign(data, data + length);
        } else if (!passages_.empty()) {
            const auto [slot, place] = passages_.front();
            passages_.erase(passages_.begin());
            std::copy_n(data, length, at(slot).ram.begin() + place);
        } else {
            return forwarding_programmer::usbbulkwrite(data, length);
        }
        return 0;
    }
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override
    {
        if (m_.reads_until_lost == 0) return 0;
        if (m_.reads_until_lost > 0) --m_.reads_until_lost;
        return forwarding_programmer::usbbulkread(buffer, length, status);
    }

    void show_named_module()
    {
        unit_.board = 7;
        unit_.level_switch = at(m_.named).pulls_down ? 1 : 0;
        unit_.test_board = at(m_.named).test_board;
    }
    std::int32_t regin(std::uint8_t address) override
    {
        show_named_module();
        return forwarding_programmer::regin(address);
    }
    bool replywait(std::uint8_t count, std::uint8_t mode, std::int32_t extra) override
    {
        show_named_module();
        if (count != 22) return forwarding_programmer::replywait(count, mode, extra);
        if (m_.loads_until_lost == 0) return false;
        if (m_.loads_until_lost > 0) --m_.loads_until_lost;
        replies_.ibuf1[0] = m_.load_answer;
        if (runs_) replies_.ibuf1[1] = 0x55;
        return true;
    }
    void delayms(std::int32_t milliseconds) override { on_delay_(milliseconds); }

    programmer_modules& m_;
    small_programmer& unit_;
    hw::reply_memory replies_;
    std::function<void(int)> on_delay_;
    std::vector<std::uint8_t> block_, coming_;
    bool image_ = false, whole_ = true, runs_ = false;
    int passing_block_ = 0;
    struct passage {
        int slot;
        std::ptrdiff_t place;
    };
    std::vector<passage> passages_;
};

}  // namespace

hw::programmer_source programmer_modules::source(small_programmer& unit, std::function<void(int)> on_delay)
{
    return [this, &unit, inner = unit.source(), on_delay = std::move(on_delay)](const hw::reply_memory& replies) {
        return std::make_unique<with_modules>(inner(replies), *this, unit, replies, on_delay);
    };
}

unit_bench::unit_bench(std::int16_t model, std::uint8_t wfig1, bool usb) : selftest_bench{model, wfig1, usb}
{
    session.hardware.source =
        with_transcript(modules.source(hardware, [this](int ms) { shell.advance(ms / 1000.0); }), transcript);
    session.syspath = host_folder.path("");
    std::vector<std::uint8_t> image;
    for (int i = 0; i < 24576 + 100; ++i) image.push_back(static_cast<std::uint8_t>(i * 7 + 3));
    write_image(image);
}

void unit_bench::write_image(const std::vector<std::uint8_t>& bytes, const std::string& name) const
{
    std::filesystem::create_directory(host_folder.path("lib1"));
    host_folder.write("lib1/" + name, std::span<const std::uint8_t>{bytes});
}

void unit_bench::insert_test_boards()
{
    for (module_state& module : modules.slots) module.test_board = true;
}

lines unit_bench::statuses() const
{
    lines found;
    for (const std::string& line : transcript)
        if (line == "status" || line.starts_with("status ")) found.push_back(line.substr(line.size() > 6 ? 7 : 6));
    return found;
}

int unit_bench::place_of(std::string_view line) const
{
    const auto found = std::ranges::find_if(transcript, [&](const auto& one) { return one.starts_with(line); });
    return found == transcript.end() ? -1 : static_cast<int>(found - transcript.begin());
}

void unit_bench::run(int option, bool go_on)
{
    lines of_run;
    during<pinnote204>([&](pinnote204& dialog) {
        at_wait = [&] { (go_on ? dialog.testbutton : dialog.teststop).click(); };
        dialog.Option1(option).click();
        transcript.clear();
        dialog.testbutton.click();
        of_run = transcript;
    });
    transcript = of_run;
}

}  // namespace tamrix::tests
