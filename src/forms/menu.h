// The menus of a form and their items.
#pragma once

#include "forms/control.h"

#include <functional>
#include <string>
#include <vector>

namespace tamrix::forms {

class menu;

/// Captions may hold one "&" before their mnemonic letter.
class menu_item final : public control {
public:
    /// Becomes the last item of `owner`.
    explicit menu_item(menu& owner);
    void accept(control_visitor& visitor) override { visitor.visit(*this); }

    property<std::string> caption{*this};
    property<bool> checked{*this, false};
    std::function<void()> on_click;

    /// The person picks the item. Does nothing if the item or its menu is disabled or hidden.
    void click();

private:
    menu& menu_;
};

class menu final : public control {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }

    property<std::string> caption{*this};

    const std::vector<menu_item*>& items() const { return items_; }

private:
    friend class menu_item;
    std::vector<menu_item*> items_;
};

}  // namespace tamrix::forms
