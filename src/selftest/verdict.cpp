#include "selftest/verdict.h"

namespace tamrix {

namespace {

std::string counted_faults(std::size_t count) { return std::to_string(count) + (count == 1 ? " fault" : " faults"); }

std::string words_of_pass(const selftest_report& report)
{
    std::string words = "passed";
    if (!report.not_tested.empty()) words += ", as far as it was tested";
    if (!report.faults.empty()) words += "; faults that fail no run: " + std::to_string(report.faults.size());
    return words;
}

}  // namespace

std::string verdict_of(const selftest_report& report)
{
    const std::string faults = counted_faults(report.faults.size());
    switch (report.result) {
    case selftest_result::passed: return words_of_pass(report);
    case selftest_result::failed: return "failed, " + faults;
    case selftest_result::stopped: return "failed, stopped after " + faults;
    case selftest_result::not_answered: return "not carried out: the programmer does not answer";
    case selftest_result::communication_error: return "not carried out: a reply did not come";
    case selftest_result::no_test_board: return "not carried out: no test board in the socket";
    default: return "not carried out";
    }
}

std::string report_text(const selftest_report& report)
{
    if (report.result == selftest_result::none) return "";
    std::string text = verdict_of(report);
    for (const selftest_fault& fault : report.faults) text += "\n" + words_of(fault);
    return text;
}

}  // namespace tamrix
