// The logic analyzer: the eight channels of P21 to P28 as a timing diagram, with zoom, scroll, files and print.
#pragma once

#include "formats/transfer_job.h"
#include "forms/file_question.h"
#include "forms/form.h"
#include "forms/scroll_bar.h"
#include "forms/status_bar.h"
#include "instruments/analyzer/analyzer_capture.h"
#include "instruments/analyzer/analyzer_drawing.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tamrix {

class analyzer final : public forms::form, private capture_display {
public:
    /// `show_pin_map` shows where the leads go, modally.
    analyzer(session& plug_in, analyzer_settings& settings, transfer_variables& transfer,
             std::function<void()> show_pin_map);

    forms::menu Menu{*this};
    forms::menu_item analyzerOpen{Menu}, analyzerSave{Menu}, analyzerSet{Menu}, analyzerprint{Menu}, Exit{Menu};
    forms::picture Picture1{*this};
    forms::scroll_bar HScroll1{*this};
    // The times; drawn on the picture.
    forms::label Label1{*this}, Label2{*this}, Label3{*this}, Label4{*this};
    // P21 to P28.
    forms::label Label5{*this}, Label6{*this}, Label7{*this}, Label8{*this};
    forms::label Label9{*this}, Label10{*this}, Label11{*this}, Label12{*this};
    forms::button Command1{*this}, Command2{*this}, Command3{*this}, Command4{*this};
    forms::status_bar StatusBar1{*this, 5, 2};   // how far it is; the trigger
    forms::text_box Text1{*this}, Text2{*this};  // of the print; hidden

    forms::layout arrangement() override;
    std::vector<forms::menu*> menus() override { return {&Menu}; }
    bool press_key(forms::form_key key) override;
    /// During a run this is Stop; the form closes after the run.
    void ask_to_leave() override;

    /// The sample at the left edge, and the width of one in twips.
    std::int32_t viewpos() const { return view_.viewpos; }
    double bitwidth() const { return view_.bitwidth; }

private:
    void on_load() override;
    void on_unload() override;
    void load_captions();
    void Form_Resize();

    void Command3_Click();
    void Command4_Click();
    void zoom(double factor);
    void scroll();
    void fit_scroll_bar();
    void drawline();
    void draw_again();
    void clear_labels();
    void analyzerSet_Click();
    void analyzerOpen_Click();
    void analyzerSave_Click();
    void analyzerprint_Click();
    void show_trigger();
    forms::file_question question(int title) const;
    status run_on(const std::string& path, transfer_routine routine);
    void show_end_of_file_work(int message);

    void clear() override;
    void show_status(int panel, const std::string& words) override;
    void enable_record(bool on) override;
    void enable_stop(bool on) override;
    void limit(int milliseconds) override;
    void draw() override;
    bool closed() const override { return !is_open(); }

    std::int32_t samples_of_banks() const;
    void say(const std::string& line) const;

    session& plug_in_;
    analyzer_settings& settings_;
    transfer_variables& transfer_;
    std::function<void()> show_pin_map_;
    analyzer_capture capture_;
    analyzer_view view_;
    std::int32_t samples_ = 0;  // of all banks
    std::int64_t savedlen_;     // the length of a load before this form
    std::string lastfile_ = "*.*";
    bool leaving_ = false;
};

}  // namespace tamrix
