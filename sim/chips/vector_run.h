// A device under test as the maker of vectors follows it: the good chip in many orders and power-up states, and beside
// it every faulty one.
#pragma once

#include "chips/tester.h"

#include <optional>

namespace tamrix::sim {

/// A level that does not move: of one pin, on the chip's side, while the tester has its own there, or of one gate. One
/// without pin and gate is a sound chip, which is wrong in this socket as a whole.
struct stuck_fault {
    static constexpr std::size_t none = ~std::size_t{0};

    std::size_t pin = none;
    bool high = false;
    std::size_t gate = none;  // an inner fault: the output of a gate
};

/// Every gate of the model stuck. They are not graded, since a real chip has other gates, but rows that show them also
/// cover everything that the chip does.
std::vector<stuck_fault> inner_faults_of(const circuit& plan);

/// Every signal pin stuck low and stuck high. A pin that is open reads high inside and outside, as one stuck high does.
std::vector<stuck_fault> faults_of(const circuit& plan);

/// The good chip: says whether the result of a row is independent of the order of its changes, and what it is.
class good_run {
public:
    explicit good_run(std::shared_ptr<const circuit> plan);

    /// The letters of the row; none if tester and chip would drive against each other, if the chip's state would depend
    /// on the order, or if something happens that the chip says to avoid. Do not use the run after a refused row.
    std::optional<std::string> apply(const row_acts& row);
    std::size_t known_registers() const;
    const tester& socket() const { return socket_; }

private:
    bool take_registers();
    bool avoided() const;
    bool careless(const row_acts& row) const;
    char letter(std::size_t pin, act done) const;
    bool known(const std::vector<std::size_t>& registers) const;

    /// The registers that a pin or a state to avoid depends on.
    struct reach {
        std::vector<std::vector<std::size_t>> values, enables, avoided;
    };
    static std::shared_ptr<const reach> reach_of(const circuit& plan);

    tester socket_;
    std::shared_ptr<const reach> reach_;
    std::vector<bool> known_;
    row_acts last_;
};

/// Chips that should fail: each fault in four runs, which differ in power-up state and order. Only what fails in all
/// four counts as found.
class faulty_runs {
public:
    static constexpr std::size_t scenarios = 4;

    /// `plan` with these faults in the socket.
    faulty_runs(const std::shared_ptr<const circuit>& plan, const std::vector<stuck_fault>& faults);

    /// One row as the good chip answered it.
    void apply(const row_acts& row, const std::string& letters);
    bool found(std::size_t fault) const;
    std::size_t found_count() const;
    /// Runs that failed, all scenarios taken together.
    std::size_t failed_runs() const;

private:
    struct batch {
        tester socket;
        std::size_t first;  // fault of lane 0
        word failed, lanes;
    };
    std::size_t count_;
    std::vector<batch> batches_;  // for each 64 faults, the scenarios one after the other
};

}  // namespace tamrix::sim
