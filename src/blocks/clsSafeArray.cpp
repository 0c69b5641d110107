#include "blocks/clsSafeArray.h"

#include <algorithm>

namespace tamrix {

clsSafeArray::~clsSafeArray() { ReleaseArray(); }

bool clsSafeArray::in_range(int dimension) const
{
    const auto attached = attached_ == nullptr ? std::size_t{1} : saved_bounds_.size();
    return dimension >= 1 && static_cast<std::size_t>(dimension) <= attached;
}

void clsSafeArray::Dimensions(std::uint16_t count)
{
    const auto limit = attached_ == nullptr ? std::uint16_t{1} : saved_header_.dimensions;
    if (count <= limit) header_->dimensions = count;
}

std::int32_t clsSafeArray::LowerBound(int dimension) const
{
    return in_range(dimension) ? bounds_[dimension - 1].lower : 0;
}

void clsSafeArray::LowerBound(int dimension, std::int32_t bound)
{
    if (in_range(dimension)) bounds_[dimension - 1].lower = bound;
}

std::uint32_t clsSafeArray::CountOfElements(int dimension) const
{
    return in_range(dimension) ? bounds_[dimension - 1].count : 0;
}

void clsSafeArray::CountOfElements(int dimension, std::uint32_t count)
{
    if (in_range(dimension)) bounds_[dimension - 1].count = count;
}

void clsSafeArray::AttachToArray(array_header* array)
{
    ReleaseArray();
    if (array == nullptr) return;
    const auto dimensions = std::max<std::uint16_t>(array->dimensions, 1);
    const array_bounds* bounds = bounds_behind(array);
    saved_header_ = *array;
    saved_bounds_.assign(bounds, bounds + dimensions);
    attached_ = array;
    header_ = array;
    bounds_ = bounds_behind(array);
    ++header_->locks;  // the run time refuses to resize or free a locked array
}

void clsSafeArray::ReleaseArray()
{
    if (attached_ == nullptr) return;
    *attached_ = saved_header_;
    std::copy(saved_bounds_.begin(), saved_bounds_.end(), bounds_);
    attached_ = nullptr;
    header_ = &detached_.header;
    bounds_ = detached_.bounds;
}

}  // namespace tamrix
