// The words of a fault's name.
#pragma once

#include "sim/faults.h"

#include <optional>

namespace tamrix::sim {

/// One fault's words, taken from the front.
class sentence {
public:
    explicit sentence(std::string_view text);

    bool ended() const { return next_ == words_.size(); }
    /// Takes the words of `phrase` where they come next.
    bool starts(std::string_view phrase);
    int number(int lowest, int highest);
    /// Takes the words of `phrase` and a number from the end.
    std::optional<int> ends(std::string_view phrase, int highest);
    void end() const;
    /// Throws fault_error about the next word.
    [[noreturn]] void fail(const std::string& expected) const;

private:
    std::string text_;
    std::vector<std::string> words_;
    std::size_t next_ = 0;
};

}  // namespace tamrix::sim
