// Which dialog an entry method shows, and the table that holds the dialogs by name.
#pragma once

#include "entry/module_variables.h"
#include "forms/form.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string_view>

namespace tamrix {

class session;

/// The self-test dialog that fits a programmer model.
constexpr std::string_view self_test_dialog(std::int16_t modeltype)
{
    switch (modeltype) {
    case 11:
    case 12:
    case 25:
    case 26: return "pinnoteISP";
    case 23:
    case 24:
    case 28:
    case 29: return "pinnote4";
    case 27: return "pinnote_sepm";
    case 39:
    case 52:
    case 54: return "pinnote204";
    default: return "pinnote";
    }
}

/// These models show their pin map before a logic test.
constexpr bool shows_pin_map_first(std::int16_t modeltype) { return self_test_dialog(modeltype) == "pinnote4"; }

/// Dialogs by name. Each is made afresh when it is shown, so it begins from its defaults.
class dialog_table {
public:
    using factory = std::function<std::unique_ptr<forms::form>(session&, module_variables&)>;

    void add(std::string_view name, factory make) { makers_.insert_or_assign(name, std::move(make)); }
    bool has(std::string_view name) const { return makers_.contains(name); }
    /// Shows the dialog modally; a name without a dialog shows nothing.
    void show(std::string_view name, session& plug_in, module_variables& variables) const;

private:
    std::map<std::string_view, factory> makers_;
};

}  // namespace tamrix
