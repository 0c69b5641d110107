#include "cli/convert_dialogs.h"

#include "base/arith.h"
#include "cli/attached_plug_in.h"
#include "cli/conversion_plan.h"
#include "cli/image_input.h"
#include "cli/output_place.h"
#include "cli/temporary_folder.h"
#include "files/file_io.h"
#include "messages/message_numbers.h"
#include "transfer/readfile.h"
#include "transfer/writefile.h"

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

namespace tamrix::cli {

namespace {

/// One run of the command: the plug-in with a buffer of the right size, and the answers to its two dialogs.
class conversion {
public:
    conversion(const convert_options& options, const conversion_plan& plan, console& con)
        : options_{options}, plan_{plan}, con_{con}, plug_in_{options.language}
    {
        host::host_blocks& blocks = plug_in_.blocks;
        blocks.value<std::int32_t>("tlength") = plan.device_words;
        blocks.value<std::uint8_t>("wordmode", 0) = plan.word_bytes;
        blocks.value<std::uint8_t>("wordmode", 1) = plan.spare_units;
        plug_in_.attach_buffer(plan.buffer_bytes);
    }

    /// met() returns what it found, judge_load() says how it ended.
    void load()
    {
        plug_in_.screen.person = [this](forms::form& dialog) {
            auto& shown = dynamic_cast<readfile&>(dialog);
            answer(shown);
            met_ = shown.met();
        };
        std::string name = options_.in, folder = syspath();
        auto format = static_cast<std::int16_t>(plan_.from);
        loaded_ = plug_in_.methods.readfile0(name, format, folder);
    }

    const load_extent& met() const { return met_; }
    const conversion_plan& plan() const { return plan_; }
    /// Another plan for the same device.
    void plan(const conversion_plan& better) { plan_ = better; }

    void judge_load()
    {
        finish(loaded_, [this](const forms::message_box& box) { return refusal_of_load(box); });
    }

    void save()
    {
        plug_in_.screen.person = [this](forms::form& dialog) { answer(dynamic_cast<writefile&>(dialog)); };
        output_place place{options_.out};
        const std::string saved = temporary_.path() + "saved";
        std::string name = saved, folder = syspath();
        const reply outcome = plug_in_.methods.wfile(name, folder);
        finish(outcome, [this](const forms::message_box& box) { return refusal_of_save(box); });
        put_in_place(saved, place);
    }

private:
    std::string syspath() const { return temporary_.path(); }

    static void enter(forms::text_box& box, const std::optional<std::int64_t>& value)
    {
        if (value) box.enter(arith::hex(*value));
    }

    /// False where the list is dead for this format.
    bool pick(forms::combo_box& list, int index, const char* option)
    {
        list.pick(index);
        if (list.index() != index) refusal_ = std::string{option} + ": this format has no byte selection";
        return list.index() == index;
    }

    /// What is refused here leaves its text, and the dialog is cancelled.
    void answer(readfile& dialog)
    {
        dialog.rfileOption2(plan_.from).click();
        if (!pick(dialog.rfilecombo1, options_.from_mode, "--from-mode")) return;
        if (!pick(dialog.rfileCombo2, options_.to_mode, "--to-mode")) return;
        enter(dialog.rfileText1, options_.to_buffer);
        enter(dialog.rfileText2, options_.from_file);
        enter(dialog.rfileText3, options_.file_size);
        constexpr int fill_00 = 1;  // with it the load of a whole binary file leaves out the clear
        dialog.rfileOption1(plan_.file_fills_buffer ? fill_00 : options_.clear).click();
        dialog.accept();
    }

    void answer(writefile& dialog)
    {
        const format& wanted = formats()[static_cast<std::size_t>(plan_.to)];
        forms::option& option = dialog.option_of(wanted);
        option.click();
        if (!option.value()) {
            refusal_ = "--to " + std::string{wanted.name} + ": a device of " + std::to_string(plan_.device_words) +
                       " words can only be saved as binary; a larger --word-bytes makes it fewer";
            return;
        }
        enter(dialog.wfileText1, plan_.save_from);
        enter(dialog.wfileText2, plan_.save_size);
        dialog.accept();
    }

    template <class Refusal>
    void finish(const reply& outcome, Refusal refusal)
    {
        con_.status_lines(plug_in_.take_status_text());
        if (!outcome.ok()) fail(outcome.error);
        if (!refusal_.empty()) refuse(refusal_);
        const auto& boxes = plug_in_.screen.boxes();
        if (!boxes.empty()) refuse(refusal(boxes.back()));
        if (plug_in_.variables.transfer.rformat == 0) return;
        const std::string why = plug_in_.variables.transfer.why_it_failed.text();
        fail(why.empty() ? "it failed without a reason" : why);
    }

    bool says(const forms::message_box& box, int message) const { return box.text == plug_in_.state.text(message); }

    std::string refusal_of_load(const forms::message_box& box) const
    {
        if (says(box, message::to_buffer_address_beyond_buffer)) {
            return "--to-buffer " + arith::hex(options_.to_buffer.value_or(0)) + ": beyond the end of the buffer (" +
                   arith::hex(plan_.buffer_bytes) + ")";
        }
        if (says(box, message::from_file_address_beyond_file)) {
            return "--from-file " + arith::hex(options_.from_file.value_or(0)) + ": beyond the end of the file (" +
                   arith::hex(input_file{options_.in}.length()) + ")";
        }
        return box.text;
    }

    std::string refusal_of_save(const forms::message_box& box) const
    {
        const std::string start = "--save-from " + arith::hex(plan_.save_from);
        const std::string size = "--save-size " + arith::hex(plan_.save_size);
        if (says(box, message::to_buffer_address_beyond_buffer)) {
            return start + ": beyond the end of the device (" + arith::hex(plan_.device_bytes()) + ")";
        }
        if (says(box, message::range_beyond_buffer)) {
            const std::int64_t limit = plan_.device_bytes() + 16 * std::int64_t{plan_.spare_units};
            return start + " " + size + ": reaches beyond the end of the device (" + arith::hex(limit) + ")";
        }
        if (says(box, message::beyond_64k_of_tektronix)) return size + ": more than a Tektronix file can hold (10000)";
        return box.text;
    }

    /// A very large image is saved in whole parts of the buffer. What follows the image in the last part is left out.
    void put_in_place(const std::string& saved, output_place& place) const
    {
        try {
            input_file file{saved};
            const std::int64_t length = plan_.through_temporary_file ? plan_.save_size : file.length();
            std::vector<std::uint8_t> piece(1 << 20);
            for (std::int64_t at = 0; at < length;) {
                const auto wanted = std::min<std::int64_t>(length - at, static_cast<std::int64_t>(piece.size()));
                const std::size_t count = file.read_at(at, std::span{piece}.first(static_cast<std::size_t>(wanted)));
                place.target().write(std::span{piece}.first(count));
                at += wanted;
            }
            place.finish();
        } catch (const file_error& error) {
            fail(error.what());
        }
    }

    const convert_options& options_;
    conversion_plan plan_;
    console& con_;
    attached_plug_in plug_in_;
    temporary_folder temporary_;
    reply loaded_;
    load_extent met_;
    std::string refusal_;
};

conversion_plan first_plan(const convert_options& options, source_file& source)
{
    if (source.estimated) {
        try {
            return plan_conversion(options, source);
        } catch (const command_error&) {
            measure(options, source);  // only the truth about the file may be a reason to refuse it
        }
    }
    return plan_conversion(options, source);
}

/// Loads the file into a buffer of its size. A long file's size is estimated first, and the load then finds it; if
/// the estimate was wrong, the file is loaded again.
std::unique_ptr<conversion> loaded(const convert_options& options, source_file& source, console& con)
{
    auto run = std::make_unique<conversion>(options, first_plan(options, source), con);
    run->load();
    if (!source.estimated) return run;
    if (run->met().whole) {
        source.addresses = run->met().addresses;
    } else {
        measure(options, source);
    }
    const conversion_plan plan = plan_conversion(options, source);
    if (plan.same_device(run->plan())) {
        run->plan(plan);
    } else {
        run.reset();
        run = std::make_unique<conversion>(options, plan, con);
        run->load();
    }
    return run;
}

}  // namespace

namespace {

/// The data go into the buffer later, by the load.
void verify_alone(const convert_options& options, console& con)
{
    judge(verified(options.inputs.front(), options.from), options.image.accept_damage, con);
}

}  // namespace

void convert_through_dialogs(const convert_options& options, console& con)
{
    source_file source{.format = options.from.value_or(0)};
    bool looked = false;
    try {
        source = look_at(options);
        looked = true;
    } catch (const file_error&) {
        // The load finds the same fault and reports it in its own way.
    }
    if (looked) verify_alone(options, con);
    const auto run = loaded(options, source, con);
    run->judge_load();
    if (!looked) fail(options.in + ": changed while it was read");
    for (const std::string& note : run->plan().notes) con.note(note);
    run->save();
}

}  // namespace tamrix::cli
