// A plug-in with dialogs that write down that they were shown.
#pragma once

#include "entry/entry_methods.h"
#include "support/plug_in_fixture.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::tests {

using names = std::vector<std::string>;

inline constexpr std::string_view all_dialogs[] = {"algoparameter", "analyzer", "recetwave", "pinnote",
                                                   "pinnoteISP",    "pinnote4", "ttltest",   "pinnote_sepm",
                                                   "pinnote204",    "ttledit"};

/// A plug-in whose dialogs write down that they were shown.
struct plug_in_with_dialogs : plug_in_fixture {
    explicit plug_in_with_dialogs(const device& chosen = {}) : plug_in_fixture{chosen} {}

    names shown;
    /// Runs in the load handler of every dialog.
    std::function<void(std::string_view name)> on_dialog;

    struct recorder final : forms::form {
        recorder(plug_in_with_dialogs& owner, std::string_view own_name) : plug_in{owner}, name{own_name} {}
        forms::layout arrangement() override { return forms::column({}); }
        void on_load() override
        {
            plug_in.shown.emplace_back(name);
            if (plug_in.on_dialog) plug_in.on_dialog(name);
        }
        plug_in_with_dialogs& plug_in;
        std::string_view name;
    };

    dialog_table recorders()
    {
        dialog_table table;
        for (const std::string_view name : all_dialogs)
            table.add(name, [this, name](tamrix::session&, module_variables&) {
                return std::make_unique<recorder>(*this, name);
            });
        return table;
    }
    entry_methods class_of_host{session, variables, recorders()};

    // The arguments of a host, which are in variables of its own.
    std::string file = "/dev/null", system_folder = "/usr/share/programmer/";
    std::uint8_t icsum = 7, mode = 1, count = 200, note = 3;
    bool16 ok = bool16_true;
    std::int16_t format = 1, num = 1;
};

}  // namespace tamrix::tests
