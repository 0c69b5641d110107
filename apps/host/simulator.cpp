#include "host/simulator.h"

#include "base/ascii.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <tuple>
#include <utility>

#include <dlfcn.h>

namespace tamrix::host {

namespace {

constexpr const char* file_name = "libtamrix_sim_programmer.so";
/// Fast enough that a test feels immediate; a wait still takes a time that the code under it notices.
constexpr int times_as_fast = 20;

std::string beside_program()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    const auto beside = program.parent_path() / file_name;
    return !error && std::filesystem::exists(beside, error) ? beside.string() : std::string{file_name};
}

template <class Function>
void find_function(void* library, Function& target, const char* name)
{
    void* const address = ::dlsym(library, name);
    if (address == nullptr)
        throw std::runtime_error{std::string{"The simulator is of another version: "} + ::dlerror()};
    target = reinterpret_cast<Function>(address);
}

void take_chip(void* context, const tamrix_simulator_chip* told)
{
    simulated_chip chip{told->name, told->description, told->same_as, told->vcc_pin, told->gnd_pin, {}};
    for (int pin = 0; pin < told->pins; ++pin) chip.pin_names.emplace_back(told->pin_names[pin]);
    static_cast<std::vector<simulated_chip>*>(context)->push_back(std::move(chip));
}

void take_hazard(void* context, const char* text) { ++(*static_cast<std::map<std::string, int>*>(context))[text]; }

/// 7404 comes before 74132.
bool stands_before(const simulated_chip& left, const simulated_chip& right)
{
    const auto digits = [](const std::string& name) {
        return std::ranges::find_if_not(name, [](unsigned char c) { return std::isdigit(c) != 0; }) - name.begin();
    };
    const auto key = [&](const simulated_chip& chip) {
        const std::string series = chip.name.substr(0, 2);
        return std::tuple{series, digits(chip.name), chip.name};
    };
    return key(left) < key(right);
}

/// What is between the ";", without blanks around it. A line break would begin an entry of another kind.
std::vector<std::string> parts_of(std::string_view texts)
{
    std::vector<std::string> parts;
    while (!texts.empty()) {
        const auto end = texts.find_first_of(";\r\n");
        if (const std::string_view part = ascii::trimmed(texts.substr(0, end)); !part.empty()) parts.emplace_back(part);
        texts.remove_prefix(end == std::string_view::npos ? texts.size() : end + 1);
    }
    return parts;
}

/// The same for signals; a ";" within quotation marks belongs to the text of a signal, where it is written \x3B.
std::vector<std::string> signals_of(std::string_view texts)
{
    std::string plain;
    bool quoted = false;
    for (std::size_t at = 0; at < texts.size(); ++at) {
        const char letter = texts[at];
        if (quoted && letter == ';') {
            plain += "\\x3B";
            continue;
        }
        plain += letter;
        if (quoted && letter == '\\' && at + 1 < texts.size()) {
            plain += texts[++at];
        } else if (letter == '"') {
            quoted = !quoted;
        }
    }
    return parts_of(plain);
}

const char* words_of(pin_state state)
{
    switch (state) {
    case pin_state::open: return " open";
    case pin_state::stuck_at_0: return " stuck 0";
    case pin_state::stuck_at_1: return " stuck 1";
    case pin_state::sound: break;
    }
    return "";
}

}  // namespace

simulator::simulator(const std::string& library_path, std::string chips_folder)
    : path_{library_path.empty() ? beside_program() : library_path}, chips_folder_{std::move(chips_folder)}
{
    void* const library = ::dlopen(path_.c_str(), RTLD_NOW | RTLD_NODELETE);
    if (library == nullptr) throw std::runtime_error{std::string{"The simulator cannot be loaded: "} + ::dlerror()};
    find_function(library, change_, "tamrix_simulator_change");
    find_function(library, hazards_, "tamrix_simulator_hazards");
    find_function(library, list_chips_, "tamrix_simulator_chips");
    std::array<char, 1024> error{};
    if (list_chips_(chips_folder_.c_str(), take_chip, &chips_, error.data(), error.size()) != TAMRIX_SIMULATOR_DONE) {
        throw std::runtime_error{std::string{"The chips cannot be read: "} + error.data()};
    }
    std::ranges::sort(chips_, stands_before);
}

std::string simulator::socket_entries() const
{
    std::string text = "socket " + (in_socket_.empty() ? std::string{"empty"} : in_socket_) + "\nno faults\n";
    for (const auto& [pin, state] : faults_) text += "fault pin " + std::to_string(pin) + words_of(state) + "\n";
    for (const std::string& fault : more_faults_) text += "fault " + fault + "\n";
    return text;
}

std::string simulator::signal_entries() const
{
    std::string text = "chips " + chips_folder_ + "\nno signals\n";
    for (const std::string& signal : signals_) text += "signal " + signal + "\n";
    if (!lead_.empty()) text += "signal lead 23 " + lead_ + "\n";
    return text;
}

std::string simulator::options(int model) const
{
    return "model " + std::to_string(model) + "\nspeed " + std::to_string(times_as_fast) + "\n" + signal_entries() +
           socket_entries();
}

const simulated_chip* simulator::find(std::string_view name) const
{
    const auto found = std::ranges::find(chips_, name, &simulated_chip::name);
    return found != chips_.end() ? &*found : nullptr;
}

pin_state simulator::state_of(int pin) const
{
    const auto found = faults_.find(pin);
    return found != faults_.end() ? found->second : pin_state::sound;
}

bool simulator::insert(std::string_view name)
{
    if (!name.empty() && name != test_board && find(name) == nullptr)
        throw std::runtime_error{"There is no chip " + std::string{name} + "."};
    in_socket_ = name;
    faults_.clear();
    return bring_in(socket_entries());
}

bool simulator::set(int pin, pin_state state)
{
    if (chip() == nullptr || pin < 1 || pin > chip()->pins()) {
        throw std::runtime_error{"The chip has no pin " + std::to_string(pin) + "."};
    }
    if (state == pin_state::sound) {
        faults_.erase(pin);
    } else {
        faults_[pin] = state;
    }
    return bring_in(socket_entries());
}

bool simulator::mend()
{
    faults_.clear();
    return bring_in(socket_entries());
}

bool simulator::add_faults(std::string_view texts)
{
    const std::vector<std::string> added = parts_of(texts);
    if (added.empty()) throw std::runtime_error{"A fault is expected, such as \"vcc driver 7 dead\"."};
    const std::vector<std::string> before = more_faults_;
    for (const std::string& fault : added) {
        std::erase(more_faults_, fault);
        more_faults_.push_back(fault);
    }
    try {
        return bring_in(socket_entries());
    } catch (const std::exception&) {
        more_faults_ = before;
        throw;
    }
}

bool simulator::remove_fault(std::size_t index)
{
    if (index < more_faults_.size()) more_faults_.erase(more_faults_.begin() + static_cast<std::ptrdiff_t>(index));
    return bring_in(socket_entries());
}

bool simulator::remove_faults()
{
    more_faults_.clear();
    return bring_in(socket_entries());
}

bool simulator::add_signals(std::string_view texts)
{
    const std::vector<std::string> added = signals_of(texts);
    if (added.empty()) throw std::runtime_error{"A signal is expected, such as \"P21 square 1000\"."};
    std::vector<std::string> all = signals_;
    all.insert(all.end(), added.begin(), added.end());
    return bring_in_signals(std::move(all), lead_);
}

bool simulator::change_signal(std::size_t index, std::string_view text)
{
    const std::vector<std::string> changed = signals_of(text);
    if (changed.size() != 1) throw std::runtime_error{"One signal is expected, such as \"P21 square 1000\"."};
    std::vector<std::string> all = signals_;
    if (index < all.size()) all[index] = changed.front();
    return bring_in_signals(std::move(all), lead_);
}

bool simulator::remove_signal(std::size_t index)
{
    std::vector<std::string> all = signals_;
    if (index < all.size()) all.erase(all.begin() + static_cast<std::ptrdiff_t>(index));
    return bring_in_signals(std::move(all), lead_);
}

bool simulator::set_lead(std::string_view pins) { return bring_in_signals(signals_, std::string{pins}); }

bool simulator::bring_in_signals(std::vector<std::string> signals, std::string lead)
{
    signals.swap(signals_);
    lead.swap(lead_);
    try {
        return bring_in(signal_entries());
    } catch (const std::exception&) {
        signals.swap(signals_);
        lead.swap(lead_);
        throw;
    }
}

bool simulator::bring_in(const std::string& entries)
{
    std::array<char, 1024> error{};
    switch (change_(entries.c_str(), error.data(), error.size())) {
    case TAMRIX_SIMULATOR_DONE: return true;
    case TAMRIX_SIMULATOR_NOT_RUNNING: return false;
    default: throw std::runtime_error{error.data()};
    }
}

std::vector<std::string> simulator::take_hazards()
{
    std::map<std::string, int> counts;
    hazards_(take_hazard, &counts);
    std::vector<std::string> told;
    for (const auto& [text, count] : counts) {
        told.push_back(count > 1 ? text + " (" + std::to_string(count) + " times)" : text);
    }
    return told;
}

}  // namespace tamrix::host
