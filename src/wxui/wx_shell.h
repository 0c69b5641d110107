// The shell on a real screen: forms as modal dialogs, message boxes, file dialogs, the printer, the message pump and
// the steady clock.
#pragma once

#include "forms/form.h"
#include "forms/shell.h"
#include "wxui/message_window.h"
#include "wxui/toolkit.h"

#include <utility>

namespace tamrix::wxui {

/// Works in a host that uses wxWidgets and in one that does not. Dialogs and boxes throw std::runtime_error if there is
/// no display.
class wx_shell final : public forms::shell {
public:
    forms::answer box(const forms::message_box& box) override;
    std::optional<std::string> open_file(const forms::file_question& question) override;
    std::optional<std::string> save_file(const forms::file_question& question) override;
    forms::print_end print(const forms::print_job& job) override;
    void beep() override;
    void doevents() override;
    double seconds() override;

    /// Names the buttons of boxes, which are otherwise English; called for each box.
    void name_answers(answer_texts texts) { answer_texts_ = std::move(texts); }

    /// Ends what the dialogs needed; the next one starts it anew. False if another thread has to do that.
    bool rest() { return toolkit_.end(); }

private:
    void run_modal(forms::form& dialog) override;

    toolkit toolkit_;
    answer_texts answer_texts_ = english_text;
};

}  // namespace tamrix::wxui
