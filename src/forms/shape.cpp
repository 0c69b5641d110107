#include "forms/shape.h"

#include "base/errors.h"

#include <string>
#include <vector>

namespace tamrix::forms {

shape::shape(picture& surface)
    : visible{surface, true}, kind{surface}, place{surface}, fill{surface}, border{surface}, surface_{surface}
{
    surface.shapes_.push_back(this);
}

shape::~shape() { std::erase(surface_.shapes_, this); }

void shape::draw_on(canvas& target) const
{
    if (visible()) target.figure(kind(), place(), fill(), border());
}

shape_array::shape_array(picture& surface, int count)
{
    for (int index = 0; index < count; ++index) shapes_.emplace_back(surface);
}

shape& shape_array::operator()(int index)
{
    if (index < 0 || index >= count()) throw subscript_error{"no shape " + std::to_string(index)};
    return shapes_[static_cast<std::size_t>(index)];
}

}  // namespace tamrix::forms
