// What became of a run of test vectors.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tamrix {

struct failed_row {
    int number;          // from 1
    std::string row;     // what was expected
    std::string result;  // the same with its fail marks
};

struct run_outcome {
    enum class kind : std::uint8_t {
        not_played,     // there were no vectors, or an earlier communication error kept them from being played
        no_answer,      // the programmer's reset failed
        passed,         // every row that was not ignored
        failed,         // a row did
        lost_reply,     // the reply to a row did not come
        refused_frame,  // the transport did not take a frame
        timed_out       // the results of a script did not come
    };
    kind what = kind::not_played;
    std::vector<failed_row> rows{};  // those that were reported as failed, also where the person ignored them
    int ignored = 0;                 // how many of them the person ignored

    /// The run broke off, or left the socket as it was, because the programmer could not be reached.
    bool communication_failed() const
    {
        return what == kind::lost_reply || what == kind::refused_frame || what == kind::timed_out;
    }
    bool ended_in_failure() const { return what == kind::failed || communication_failed(); }
    /// The pins at which a row failed; bit 0 is pin 1.
    std::uint64_t failed_pins() const;
};

/// A run that is over.
struct finished_test {
    std::string device;  // its name in the library; empty if the vectors were those of the host's device
    int pins;
    run_outcome outcome;
};

}  // namespace tamrix
