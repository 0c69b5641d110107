// libtamrix.so in the workbench: finds it, loads it, and looks up its functions.
#pragma once

#include "tamrix/clstamrix.h"
#include "tamrix/formats.h"
#include "tamrix/text_heap.h"

#include <string>

namespace tamrix::workbench {

/// Stays loaded until the program ends: the toolkit under its dialogs cannot be unloaded.
class plug_in_library {
public:
    /// Loads `path`; if that is empty, the library beside the program, else the one that the system finds. Throws
    /// std::runtime_error.
    explicit plug_in_library(const std::string& path);

    decltype(&tamrix_create) create;
    decltype(&tamrix_destroy) destroy;
    decltype(&tamrix_use_programmer) use_programmer;
    decltype(&tamrix_diagnostic) diagnostic;
    decltype(&tamrix_jedec_note) jedec_note;
    decltype(&tamrix_help_file) help_file;
    decltype(&tamrix_vector_count) vector_count;
    decltype(&tamrix_last_selftest) last_selftest;
    decltype(&tamrix_selftest_report) selftest_report;
    decltype(&tamrix_describe_logic_test) describe_logic_test;
    decltype(&tamrix_propose_logic_device) propose_logic_device;
    decltype(&tamrix_has_language) has_language;
    decltype(&tamrix_offers) offers;
    decltype(&tamrix_describe_format) describe_format;
    decltype(&tamrix_detect_format) detect_format;
    decltype(&tamrix_detect_pld) detect_pld;
    text_heap_functions texts;

private:
    void* library_;
};

}  // namespace tamrix::workbench
