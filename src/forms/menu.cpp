#include "forms/menu.h"

namespace tamrix::forms {

menu_item::menu_item(menu& owner) : control{owner.owner()}, menu_{owner} { owner.items_.push_back(this); }

void menu_item::click()
{
    if (usable() && menu_.usable()) raise(on_click);
}

}  // namespace tamrix::forms
