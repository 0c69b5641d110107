#include "support/scripted_shell.h"

#include "support/listing.h"
#include "support/next_of.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace tamrix::tests {

/// Stands where a renderer would.
class scripted_shell::watcher final : public forms::form_view {
public:
    explicit watcher(scripted_shell& shell) : shell_{shell} {}

    void control_changed(forms::control& which) override
    {
        shell_.changed_.push_back(&which);
        // Cheaper than a cast that may fail: a long run changes controls by the hundred thousand.
        if (typeid(which) == typeid(forms::progress_bar))
            shell_.progress_.push_back(static_cast<const forms::progress_bar&>(which).value());
    }
    void caption_changed() override {}
    void beep() override { shell_.beep(); }
    void closed() override {}

private:
    scripted_shell& shell_;
};

void scripted_shell::run_modal(forms::form& dialog)
{
    ++dialogs_shown_;
    watcher view{*this};
    dialog.show_on(&view);
    open_.push_back(&dialog);
    struct at_end {
        scripted_shell& shell;
        forms::form& dialog;
        ~at_end()
        {
            shell.open_.pop_back();
            // A timer that comes back, or another one at its address, begins a whole interval.
            for (const forms::control* one : dialog.controls())
                std::erase_if(shell.due_, [one](const auto& due) { return due.first == one; });
            dialog.show_on(nullptr);
        }
    } const restore{*this, dialog};
    if (!steps_.empty()) {
        const auto steps = std::move(steps_.front());
        steps_.pop_front();
        steps(dialog);
    }
    dialog.close();
}

void scripted_shell::during(forms::form& dialog, std::function<void()> steps)
{
    on_next_dialog([steps = std::move(steps)](forms::form&) { steps(); });
    show_modal(dialog);
}

forms::answer scripted_shell::box(const forms::message_box& box)
{
    boxes_.push_back(box.text);
    whole_boxes_.push_back(box);
    if (on_box) on_box(box);
    if (!answers_.empty()) {
        const forms::answer answer = answers_.front();
        answers_.pop_front();
        return answer;
    }
    switch (box.buttons) {
    case forms::buttons_of_box::yes_no: return forms::answer::yes;
    case forms::buttons_of_box::retry_cancel: return forms::answer::cancel;
    case forms::buttons_of_box::abort_retry_ignore: return forms::answer::abort;
    default: return forms::answer::ok;
    }
}

namespace {

class listed_page final : public listing<forms::page> {
public:
    explicit listed_page(forms::point size) : size_{size} {}
    forms::point size() const override { return size_; }

private:
    forms::point size_;
};

}  // namespace

std::optional<std::string> scripted_shell::open_file(const forms::file_question& question)
{
    to_open_.push_back(question);
    return next_of(files_, std::optional<std::string>{});
}

std::optional<std::string> scripted_shell::save_file(const forms::file_question& question)
{
    to_save_.push_back(question);
    return next_of(files_, std::optional<std::string>{});
}

forms::print_end scripted_shell::print(const forms::print_job& job)
{
    print_titles_.push_back(job.title);
    const forms::print_end end = next_of(prints_, forms::print_end::cancelled);
    if (end == forms::print_end::printed) {
        listed_page page{page_size};
        job.draw(page);
        pages_.push_back(page.calls);
    }
    return end;
}

void scripted_shell::doevents()
{
    ++pumps_;
    if (on_doevents) on_doevents();
}

int scripted_shell::changes(const forms::control& which) const
{
    return static_cast<int>(std::ranges::count(changed_, &which));
}

void scripted_shell::advance(double seconds)
{
    const double target = seconds_ + seconds;
    for (;;) {
        forms::timer* first = nullptr;
        double first_due = target;
        for (forms::form* dialog : open_) {
            for (forms::control* one : dialog->controls()) {
                auto* timer = dynamic_cast<forms::timer*>(one);
                if (timer == nullptr) continue;
                auto known = std::ranges::find(due_, timer, &decltype(due_)::value_type::first);
                if (!timer->running()) {
                    if (known != due_.end()) due_.erase(known);
                    continue;
                }
                if (known == due_.end())
                    known = due_.insert(due_.end(), {timer, seconds_ + timer->interval_ms() / 1000.0});
                if (known->second > first_due) continue;
                first = timer;
                first_due = known->second;
            }
        }
        if (first == nullptr) break;
        seconds_ = first_due;
        std::ranges::find(due_, first, &decltype(due_)::value_type::first)->second += first->interval_ms() / 1000.0;
        first->tick();
    }
    seconds_ = target;
}

}  // namespace tamrix::tests
