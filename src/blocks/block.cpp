#include "blocks/block.h"

#include "blocks/text_heap.h"

#include <algorithm>
#include <cstring>

namespace tamrix {

namespace {

constexpr std::uint16_t holds_texts = 0x0100;  // the descriptor's flag for arrays of text handles

}  // namespace

block_base::block_base(const block_info& info, std::uint16_t features) : info_{&info}
{
    array_.header.features = features;
    array_.header.element_bytes = element_bytes(info.kind);
    array_.header.data = private_element_;
    array_.bounds[0].count = 1;
}

block_base::~block_base() { release(); }

void block_base::clear_private_element() { std::memset(private_element_, 0, sizeof private_element_); }

void block_base::throw_subscript(std::int64_t index) const
{
    throw subscript_error{"subscript out of range: " + std::string{name()} + "(" + std::to_string(index) + ")"};
}

std::size_t block_base::reachable_count() const
{
    return std::min<std::size_t>(count(), reachable_bytes() / array_.header.element_bytes);
}

bool block_base::attach(const std::string& name_space, const std::string& object, std::int32_t mapped_bytes,
                        std::uint32_t count)
{
    release();
    mapping_ = std::make_unique<clsMemMapped>(name_space);
    overlay_ = std::make_unique<clsSafeArray>();
    clear_private_element();
    if (!mapping_->OpenAndMapMemoryBlock(object, mapped_bytes)) return false;
    overlay_->AttachToArray(&array_.header);
    overlay_->CountOfElements(1, count);
    overlay_->PointerToData(mapping_->BaseAddress());
    reach_bytes_ = mapping_->reach_bytes();
    return true;
}

void block_base::release()
{
    if (overlay_ != nullptr) overlay_->ReleaseArray();
    reach_bytes_ = 0;
    if (mapping_ != nullptr) mapping_->UnMapFile();
}

text_block::text_block(const block_info& info) : block_base{info, holds_texts} {}

text_block::~text_block()
{
    release();
    text_block::clear_private_element();
}

void text_block::clear_private_element()
{
    std::uint32_t handle = 0;
    std::memcpy(&handle, private_element_, sizeof handle);
    text_heap::free(handle);
    block_base::clear_private_element();
}

std::string text_element::str() const { return text_heap::get(*handle_); }

text_element& text_element::operator=(std::string_view text)
{
    const std::uint32_t fresh = text_heap::make(text);
    text_heap::free(*handle_);
    *handle_ = fresh;
    return *this;
}

}  // namespace tamrix
