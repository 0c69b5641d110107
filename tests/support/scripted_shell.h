// A screen for tests: dialogs, questions for files and prints are answered by the test's own steps, boxes and pages are
// recorded, and time stops until the test moves it.
#pragma once

#include "forms/form.h"
#include "forms/shell.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tamrix::tests {

class scripted_shell final : public forms::shell {
public:
    /// Runs `steps` while the next dialog is shown. A dialog that is still open after its steps is closed. A dialog
    /// without steps is closed at once.
    void on_next_dialog(std::function<void(forms::form&)> steps) { steps_.push_back(std::move(steps)); }
    /// Shows `dialog` and runs `steps` meanwhile.
    void during(forms::form& dialog, std::function<void()> steps);
    /// The answer to the next box; without one a box is answered with its first button, but no attempt is repeated.
    void answer_next_box(forms::answer answer) { answers_.push_back(answer); }
    /// The answer to the next question for a file; without one it is cancelled.
    void answer_next_file(std::optional<std::string> name) { files_.push_back(std::move(name)); }
    /// The end of the next print; without one it is cancelled. The job draws where it is printed.
    void answer_next_print(forms::print_end end) { prints_.push_back(end); }
    /// Runs in every round of the message pump, as a person's clicks would.
    std::function<void()> on_doevents;
    /// Runs before a box is answered.
    std::function<void(const forms::message_box&)> on_box;

    /// Lets time pass; timers of the dialog on top tick when they are due.
    void advance(double seconds);

    /// The texts of the boxes that were shown.
    const std::vector<std::string>& boxes() const { return boxes_; }
    /// The boxes themselves.
    const std::vector<forms::message_box>& whole_boxes() const { return whole_boxes_; }
    const std::vector<forms::file_question>& files_to_open() const { return to_open_; }
    const std::vector<forms::file_question>& files_to_save() const { return to_save_; }
    /// The titles of the pages that were to be printed, and what is on those that were.
    const std::vector<std::string>& print_titles() const { return print_titles_; }
    const std::vector<std::vector<std::string>>& pages() const { return pages_; }
    forms::point page_size{11906, 16838};  // A4, in twips
    int beeps() const { return beeps_; }
    int pumps() const { return pumps_; }
    /// How often controls of the shown dialogs notified their renderer, by control.
    int changes(const forms::control& which) const;
    /// Every value that a progress bar showed, in order.
    const std::vector<double>& progress() const { return progress_; }
    int dialogs_shown() const { return dialogs_shown_; }

    forms::answer box(const forms::message_box& box) override;
    std::optional<std::string> open_file(const forms::file_question& question) override;
    std::optional<std::string> save_file(const forms::file_question& question) override;
    forms::print_end print(const forms::print_job& job) override;
    void beep() override { ++beeps_; }
    void doevents() override;
    double seconds() override { return seconds_; }

private:
    class watcher;
    void run_modal(forms::form& dialog) override;

    std::deque<std::function<void(forms::form&)>> steps_;
    std::deque<forms::answer> answers_;
    std::deque<std::optional<std::string>> files_;
    std::deque<forms::print_end> prints_;
    std::vector<forms::file_question> to_open_, to_save_;
    std::vector<std::string> print_titles_;
    std::vector<std::vector<std::string>> pages_;
    std::vector<std::string> boxes_;
    std::vector<forms::message_box> whole_boxes_;
    std::vector<double> progress_;
    std::vector<const forms::control*> changed_;
    std::vector<forms::form*> open_;
    std::vector<std::pair<const forms::timer*, double>> due_;
    int beeps_ = 0, pumps_ = 0, dialogs_shown_ = 0;
    double seconds_ = 0;
};

}  // namespace tamrix::tests
