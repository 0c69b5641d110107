// Which dialog an entry method shows, and the table that holds the dialogs by name.
#pragma once

#include "entry/module_variables.h"
#include "forms/form.h"

#include <functional>
#include <map>
#include <memory>
#include <string_view>

namespace tamrix {

class session;

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
