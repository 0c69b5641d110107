#include "ttl/run/vector_run.h"

#include <algorithm>

namespace tamrix {

namespace {

using kind = run_outcome::kind;

/// A result row as it is shown.
std::string shown_row(const vector_run& run, std::string text)
{
    text.resize(std::min(text.size(), static_cast<std::size_t>(run.pins < 0 ? 0 : run.pins)));
    return text;
}

}  // namespace

after_row judge_row(const vector_run& run, const compared_row& compared, run_outcome& outcome, std::string_view indent)
{
    if (compared.failed) outcome.what = kind::failed;
    if (outcome.what != kind::failed) return after_row::go_on;
    if (run.stopfirst == -1) return after_row::end;
    if (run.stopfirst != 0) return after_row::go_on;
    const failed_row told{compared.j + 1, std::string{run.row(compared.j)}, shown_row(run, compared.result)};
    if (compared.failed) outcome.rows.push_back(told);
    // Intentional: in the log every row after a failed one is reported too, passing or not, as the run stays failed.
    switch (report_failed_row(run.plug_in, run.logmode, told, indent)) {
    case after_report::go_on: break;
    case after_report::forgive:
        outcome.what = kind::passed;
        ++outcome.ignored;
        break;
    case after_report::start_again: return after_row::start_again;
    case after_report::end_as_failed: return after_row::end;
    }
    return after_row::go_on;
}

}  // namespace tamrix
