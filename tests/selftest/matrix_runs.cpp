#include "matrix_runs.h"

#include "self_test_forms.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace tamrix::tests {

namespace {

void play(sim_bench& b, selftest_frame& dialog, int option, outcome& what)
{
    b.at_wait = [&] {
        b.session.blocks.MainRtstr(0) = "";  // thousands of faults make it long, and slow
        dialog.testbutton.click();
    };
    dialog.Option1(option).click();
    dialog.testbutton.click();
    what.result = b.report().result;
    for (const selftest_fault& one : b.report().faults) what.found.push_back(finding_of(one));
}

}  // namespace

outcome run(situation where, std::span<const single_fault> faults, bool output, kept_bench& kept)
{
    where.test_board = output;
    where.transcript = where.events = false;
    const std::string name = name_of(where) + (output ? " output" : " system") + (where.low_first ? " low first" : "") +
                             std::to_string(where.memory_banks);
    if (kept.bench == nullptr || std::exchange(kept.name, name) != name)
        kept.bench = std::make_unique<sim_bench>(where);
    sim_bench& b = *kept.bench;
    std::vector<std::string> texts = where.faults;
    for (const single_fault& one : faults) texts.push_back(one.text());
    b.replace_programmer(std::move(texts));
    const form_of_test& form = form_of(where.model);
    const int option = output ? form.output_option + (where.low_first ? 1 : 0) : 0;
    outcome what;
    form.show(b, [&](selftest_frame& dialog) { play(b, dialog, option, what); });
    what.hazards = b.hazards();
    what.errors = b.errors;
    return what;
}

outcome run(const situation& where, std::span<const single_fault> faults, bool output)
{
    kept_bench own;
    return run(where, faults, output, own);
}

void expect_sound(const situation& where, bool output)
{
    const outcome real = run(where, {}, output);
    EXPECT_EQ(real.result, selftest_result::passed) << name_of(where);
    EXPECT_EQ(real.hazards, std::vector<std::string>{}) << name_of(where);
    EXPECT_TRUE(real.found.empty()) << name_of(where);
}

std::vector<situation> situations_of(std::int16_t model)
{
    const bool like_another = model == 2 || model == 25 || model == 50 || model == 57;
    std::vector<situation> all;
    for (const int generation : {0, 17}) {
        for (const bool usb : {true, false}) {
            if (model == 23 && !usb) continue;
            if (like_another && usb == (generation == 17)) continue;
            all.push_back({.model = model, .generation = generation, .usb = usb, .memory_banks = model < 40 ? 0 : 1});
        }
    }
    return all;
}

void expect_found(situation where, const std::vector<single_fault>& faults, bool output, tally& counts)
{
    where.test_board = output;
    const auto seen_of = [&](std::span<const single_fault> some) {
        return output ? seen_by_output_test(where, some) : seen_by_system_test(where, some);
    };
    const outcome real = run(where, faults, output, counts.kept);
    EXPECT_EQ(real.found, seen_of(faults)) << name_of(where) << ": " << faults.front().text() << ", and so on";
    EXPECT_EQ(real.result, output ? end_of_output_test(where, faults) : end_of_system_test(where, faults))
        << name_of(where) << ": " << faults.front().text() << ", and so on";
    for (const single_fault& one : faults) {
        ++counts.tried;
        const auto seen = seen_of({&one, 1});
        if (seen.empty() && one.kind != fault_kind::module_missing) {
            ++counts.invisible[why_invisible(where, one)];
            continue;
        }
        ++counts.seen;
        if (std::ranges::any_of(seen, [&](const finding& found) { return tells(found, one); })) ++counts.told;
    }
}

void expect_on_page(std::int16_t model, const std::string& test, const tally& counts)
{
    std::string row = "| " + std::to_string(model) + " | " + test;
    for (const int count : {counts.tried, counts.seen, counts.told}) row += " | " + std::to_string(count);
    row += " |";
    const char* between = " ";
    for (const auto& [why, count] : counts.invisible)
        row += std::exchange(between, "; ") + std::to_string(count) + ": " + why;
    row += " |\n";
    const std::string page = read_text(TAMRIX_FAULTS_PAGE);
    EXPECT_TRUE(page.find("\n" + row) != std::string::npos) << "not on the page: " << row;
}

}  // namespace tamrix::tests
