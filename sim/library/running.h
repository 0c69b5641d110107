// A simulated programmer with the C interface, and the list of those in this process.
#pragma once

#include "sim/library/options.h"
#include "tamrix/hardware.h"

#include <fstream>
#include <mutex>
#include <string>
#include <vector>

/// A programmer that runs in real time.
struct tamrix_programmer {
    tamrix_programmer(const tamrix::sim::library_options& options, tamrix::sim::reply_place replies);
    /// Passes its last hazards on to the others.
    ~tamrix_programmer();
    tamrix_programmer(const tamrix_programmer&) = delete;
    tamrix_programmer& operator=(const tamrix_programmer&) = delete;

    tamrix::hw::lumbat& transport() { return inner_->transport(); }
    tamrix::hw::devobj& device() { return inner_->device(); }

    /// All or nothing. Throws std::invalid_argument.
    void change(const tamrix::sim::library_options& changes);
    /// Writes what is new since the last call to the transcript's file.
    void write_transcript();
    /// Moves what is new since the last call to the end of `into`.
    void take_hazards(std::vector<std::string>& into);

    /// Locked during every call: a host may change the programmer while its user works.
    std::mutex busy;
    std::string error;

private:
    int model_;
    std::string chips_folder_;
    std::shared_ptr<tamrix::sim::wall_clock> time_;
    std::shared_ptr<tamrix::sim::journal> log_;
    std::size_t hazards_taken_ = 0;
    std::ofstream transcript_;
    std::unique_ptr<tamrix::sim::programmer> inner_;
};

namespace tamrix::sim {

/// The only state that the library keeps for the process. The C interface gives a programmer only to its creator, but
/// somebody else changes it.
class running_programmers {
public:
    static running_programmers& of_this_process();

    void add(tamrix_programmer* made);
    void remove(tamrix_programmer* going);
    void leave_hazards(std::vector<std::string> hazards);

    /// Changes the one created last; false if there is none. Throws std::invalid_argument, also for a wrong fault
    /// or signal where there is none.
    bool change(const library_options& changes);
    std::vector<std::string> take_hazards();

private:
    std::mutex mutex_;  // taken before a programmer's own, never while that is held
    std::vector<tamrix_programmer*> running_;
    std::vector<std::string> hazards_of_gone_;
};

}  // namespace tamrix::sim
