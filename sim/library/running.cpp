#include "sim/library/running.h"

#include <exception>
#include <filesystem>
#include <stdexcept>
#include <utility>

using namespace tamrix;

namespace {

// Nothing is done before all is known to be good.

void try_faults(const sim::library_options& changes)
{
    sim::fault_set tried;
    for (const std::string& fault : changes.faults) sim::add_fault(tried, fault);
}

/// `folder` has the chips among them.
sim::signal_set with_signals(sim::signal_set all, const sim::library_options& changes, const std::string& folder)
{
    if (changes.no_signals) all = sim::signal_set{};
    all.take_chips_from(sim::shelf_of(folder));
    for (const std::string& signal : changes.signals) all.add(signal);
    return all;
}

}  // namespace

tamrix_programmer::tamrix_programmer(const sim::library_options& options, sim::reply_place replies)
    : model_{options.model},
      chips_folder_{options.chips_folder},
      time_{std::make_shared<sim::wall_clock>(options.speed)},
      log_{std::make_shared<sim::journal>(time_)},
      inner_{std::make_unique<sim::programmer>(sim::setup{.model = options.model,
                                                          .generation = options.generation,
                                                          .memory_banks = options.memory_banks,
                                                          .time = time_,
                                                          .log = log_},
                                               std::move(replies))}
{
    if (!options.transcript_file.empty()) {
        transcript_.open(std::filesystem::path{options.transcript_file}, std::ios::binary);
        if (!transcript_) throw std::runtime_error{"cannot write " + options.transcript_file};
    }
    log_->record(transcript_.is_open());
    change(options);
}

tamrix_programmer::~tamrix_programmer()
{
    inner_.reset();
    try {
        write_transcript();
        std::vector<std::string> last;
        take_hazards(last);
        sim::running_programmers::of_this_process().leave_hazards(std::move(last));
    } catch (const std::exception&) {
        return;  // no memory for the texts, and nobody left to report to
    }
}

void tamrix_programmer::write_transcript()
{
    if (!transcript_.is_open()) return;
    transcript_ << log_->transcript(true) << std::flush;
    log_->clear_transcript();
}

void tamrix_programmer::change(const sim::library_options& changes)
{
    try_faults(changes);
    const std::string& folder = changes.chips_folder.empty() ? chips_folder_ : changes.chips_folder;
    sim::signal_set signals = with_signals(inner_->signals(), changes, folder);
    const int modules = sim::modules::belong_to(model_) ? sim::modules::count : 0;
    for (int socket = 0; changes.socket && socket <= modules; ++socket)
        inner_->insert(sim::part_named(*changes.socket, model_, folder), socket);
    chips_folder_ = folder;
    if (changes.no_signals || !changes.signals.empty()) inner_->set_signals(std::move(signals));
    if (changes.no_faults) inner_->clear_faults();
    for (const std::string& fault : changes.faults) inner_->add_fault(fault);
}

void tamrix_programmer::take_hazards(std::vector<std::string>& into)
{
    const auto& all = log_->hazards();
    for (; hazards_taken_ < all.size(); ++hazards_taken_) into.push_back(all[hazards_taken_].text);
}

namespace tamrix::sim {

running_programmers& running_programmers::of_this_process()
{
    static running_programmers all;
    return all;
}

void running_programmers::add(tamrix_programmer* made)
{
    const std::lock_guard lock{mutex_};
    running_.push_back(made);
}

void running_programmers::remove(tamrix_programmer* going)
{
    const std::lock_guard lock{mutex_};
    std::erase(running_, going);
}

void running_programmers::leave_hazards(std::vector<std::string> hazards)
{
    const std::lock_guard lock{mutex_};
    for (std::string& one : hazards) hazards_of_gone_.push_back(std::move(one));
}

bool running_programmers::change(const library_options& changes)
{
    const std::lock_guard lock{mutex_};
    if (running_.empty()) {
        try_faults(changes);
        with_signals(sim::signal_set{}, changes, changes.chips_folder);
        return false;
    }
    tamrix_programmer& last = *running_.back();
    const std::lock_guard call{last.busy};
    last.change(changes);
    return true;
}

std::vector<std::string> running_programmers::take_hazards()
{
    const std::lock_guard lock{mutex_};
    std::vector<std::string> all = std::exchange(hazards_of_gone_, {});
    for (tamrix_programmer* one : running_) {
        const std::lock_guard call{one->busy};
        one->take_hazards(all);
    }
    return all;
}

}  // namespace tamrix::sim
