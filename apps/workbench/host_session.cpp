#include "workbench/host_session.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace tamrix::workbench {

namespace {

constexpr const char* name_space_variable = "TAMRIX_NAMESPACE";

/// The memory into which a programmer records.
constexpr std::int32_t bank_bytes = 32768, most_banks = 16;
constexpr std::uint8_t least_banks = 4;

/// Two workbenches have two devices, so they share no buffer unless asked to.
std::string take_name_space()
{
    if (const char* told = std::getenv(name_space_variable); told != nullptr) return told;
    const std::string own = "w" + std::to_string(getpid()) + ".";
    setenv(name_space_variable, own.c_str(), 1);
    return own;
}

std::string make_work_folder()
{
    namespace fs = std::filesystem;
    const char* cache = std::getenv("XDG_CACHE_HOME");
    const char* home = std::getenv("HOME");
    fs::path parent = cache != nullptr && *cache != '\0' ? fs::path{cache}
                      : home != nullptr                  ? fs::path{home} / ".cache"
                                                         : fs::temp_directory_path();
    std::error_code error;
    fs::create_directories(parent / "tamrix", error);
    if (error) parent = fs::temp_directory_path();
    fs::create_directories(parent / "tamrix", error);
    std::string pattern = (parent / "tamrix" / "work-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error{"No folder for temporary files: " + pattern};
    return pattern + "/";
}

std::uint8_t blank_byte(const host::device_preset& device)
{
    return device.clear == host::clear_choice::fill_00 ? 0x00 : 0xFF;
}

}  // namespace

host_session::host_session(const std::string& plug_in_path)
    : private_names_{std::getenv(name_space_variable) == nullptr},
      library_{plug_in_path},
      work_folder_{make_work_folder()},
      plug_in_{nullptr, destroyer{library_.destroy}}
{
    name_space_ = take_name_space();
    plug_in_.reset(library_.create());
    if (plug_in_ == nullptr) throw std::runtime_error{"The plug-in cannot be started."};
    require(attach_small());
}

host_session::~host_session()
{
    if (plug_in_ != nullptr) plug_in_->freesharebufferopt();
    plug_in_.reset();
    blocks_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(work_folder_, ignored);
}

void host_session::require(const outcome& told) const
{
    if (!told.result.ok()) throw std::runtime_error{told.result.error};
}

std::span<std::uint8_t> host_session::buffer()
{
    const std::span<std::uint8_t> whole = blocks_->buffer();
    return whole.first(std::min<std::size_t>(whole.size(), static_cast<std::size_t>(device_.buffer_bytes)));
}

std::vector<std::uint8_t> host_session::bytes_to_keep() { return {buffer().begin(), buffer().end()}; }

outcome host_session::enter(const host::device_preset& device, const std::vector<std::uint8_t>& content)
{
    host::apply(device, *blocks_);
    device_ = device;
    return renew_buffer(content);
}

void host_session::select(const host::device_preset& device)
{
    const host::device_preset before = device_;
    const std::vector<std::uint8_t> kept = bytes_to_keep();
    try {
        require(enter(device, {}));
    } catch (...) {
        if (before.buffer_bytes > 0) enter(before, kept);
        throw;
    }
}

void host_session::use_programmer(programmer_choice choice)
{
    programmer_ = std::move(choice);
    tell_programmer();
}

void host_session::tell_programmer()
{
    blocks_->value<std::int16_t>("modeltype") = programmer_.model;
    blocks_->value<std::int16_t>("usbable") = static_cast<std::int16_t>(programmer_.usb ? bool16_true : bool16_false);
    const auto& [library, options, model, usb] = programmer_;
    if (library_.use_programmer(plug_in_.get(), library.c_str(), options.c_str()) == 0) {
        throw std::runtime_error{"no memory for the programmer"};
    }
}

outcome host_session::run(const std::function<reply(Clstamrix&)>& method)
{
    blocks_->set_text("MainRtstr", 0, "");
    outcome told;
    told.result = method(*plug_in_);
    told.lines = blocks_->text("MainRtstr", 0);
    return told;
}

outcome host_session::show_note()
{
    std::uint8_t note = device_.note;
    bool16 external_supply = bool16_false;
    return run([&](Clstamrix& plug_in) { return plug_in.warn(note, external_supply); });
}

outcome host_session::vector_test(bool hardware)
{
    constexpr int most_rows = 100;
    std::uint8_t vectors_of_file = 1, supply_of_device = 1;
    auto rows_and_one = static_cast<std::uint8_t>(std::min(vector_count(), most_rows) + 1);
    bool16 ok = hardware ? bool16_true : bool16_false;
    return run(
        [&](Clstamrix& plug_in) { return plug_in.vecttest0(vectors_of_file, rows_and_one, supply_of_device, ok); });
}

outcome host_session::analyze()
{
    auto& words = blocks_->value<std::int32_t>("tlength");
    auto& bytes_of_word = blocks_->value<std::uint8_t>("wordmode", 0);
    auto& spare_units = blocks_->value<std::uint8_t>("wordmode", 1);
    const std::vector<std::uint8_t> kept = bytes_to_keep();
    const auto use_buffer_for = [&](std::int32_t length, std::uint8_t bytes, std::uint8_t units, std::int32_t room,
                                    const std::vector<std::uint8_t>& content) {
        words = length;
        bytes_of_word = bytes;
        spare_units = units;
        device_.buffer_bytes = room;
        require(renew_buffer(content));
    };
    const auto put_back = [&, length = words, bytes = bytes_of_word, units = spare_units, room = device_.buffer_bytes] {
        use_buffer_for(length, bytes, units, room, kept);
    };
    // A self-test counts the banks; until then there are those that each programmer has.
    auto& banks = blocks_->value<std::uint8_t>("rambknum");
    if (banks == 0) banks = least_banks;
    outcome told;
    try {
        use_buffer_for(most_banks * bank_bytes, 1, 0, most_banks * bank_bytes, {});
        told = run([](Clstamrix& plug_in) { return plug_in.analyzer0(); });
    } catch (...) {
        put_back();
        throw;
    }
    put_back();
    return told;
}

std::vector<logic_test> host_session::logic_tests() const
{
    std::vector<logic_test> tests;
    tamrix_logic_test described{};
    while (library_.describe_logic_test(plug_in_.get(), static_cast<int>(tests.size()), &described) != 0)
        tests.push_back(taken_over(described));
    return tests;
}

std::pair<tamrix_selftest_result, std::string> host_session::last_selftest() const
{
    return {library_.last_selftest(plug_in_.get()), library_.selftest_report(plug_in_.get())};
}

void host_session::use_language(std::int32_t offset)
{
    blocks_->value<std::int32_t>("Language") = offset;
    language_ = offset;
}

outcome host_session::attach_small()
{
    std::vector<std::uint8_t> kept;
    if (blocks_ != nullptr) {
        kept = bytes_to_keep();
        require(release_buffer());
        blocks_.reset();
    }
    const std::int16_t free_instance = host::first_free_instance(name_space_);
    blocks_ = std::make_unique<host::host_blocks>(name_space_, free_instance, library_.texts);
    host::apply(device_, *blocks_);
    use_language(language_);
    outcome told = run([this](Clstamrix& plug_in) {
        std::int16_t num = blocks_->num();
        return plug_in.bufcomopt(num);
    });
    keep_names_private();
    tell_programmer();
    if (device_.buffer_bytes > 0) require(renew_buffer(kept));
    return told;
}

outcome host_session::attach_buffer() { return renew_buffer(bytes_to_keep()); }

outcome host_session::release_buffer()
{
    attached_ = false;
    return run([](Clstamrix& plug_in) { return plug_in.freesharebufferopt(); });
}

outcome host_session::renew_buffer(const std::vector<std::uint8_t>& content)
{
    require(release_buffer());
    blocks_->create_buffer(device_.buffer_bytes);
    const std::span<std::uint8_t> fresh = buffer();
    const std::size_t kept = std::min(content.size(), fresh.size());
    std::copy_n(content.begin(), kept, fresh.begin());
    std::ranges::fill(fresh.subspan(kept), blank_byte(device_));
    outcome told = run([this](Clstamrix& plug_in) {
        std::int16_t num = blocks_->num();
        return plug_in.buffercomopt(num);
    });
    attached_ = told.result.ok();
    keep_names_private();
    return told;
}

/// After the plug-in has opened the blocks, removes the names that nobody else should find: nothing is then left over,
/// even if the program is killed.
void host_session::keep_names_private()
{
    if (private_names_) blocks_->withdraw_names();
}

}  // namespace tamrix::workbench
