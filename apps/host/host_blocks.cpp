#include "host/host_blocks.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tamrix::host {

namespace {

std::size_t line_of(std::string_view name)
{
    const auto* found = std::ranges::find(small_blocks, name, &block_info::name);
    if (found == small_blocks.end()) throw std::out_of_range{"no shared block " + std::string{name}};
    return static_cast<std::size_t>(found - small_blocks.begin());
}

}  // namespace

host_blocks::host_blocks(std::string name_space, std::int16_t num, text_heap_functions texts)
    : name_space_{std::move(name_space)}, num_{num}, texts_{texts}
{
    for (const block_info& line : small_blocks) {
        const std::string object = name_space_ + small_block_object(line.name, num_);
        small_.push_back(std::make_unique<shared_object>(object, line.mapped_bytes));
    }
}

host_blocks::~host_blocks()
{
    // In a block that somebody else created, the numbers may mean texts of another process.
    for (std::size_t i = 0; i < small_blocks.size(); ++i) {
        const block_info& line = small_blocks[i];
        if (line.kind != element::text || !small_[i]->created()) continue;
        for (std::size_t index = 0; index < line.count; ++index) {
            texts_.free(std::exchange(handle(line.name, index), 0));
        }
    }
}

unsigned char* host_blocks::element(std::string_view name, std::size_t index, tamrix::element kind) const
{
    const std::size_t line = line_of(name);
    const block_info& block = small_blocks[line];
    const tamrix::element stored = block.kind == element::boolean ? element::int16 : block.kind;
    if (stored != kind) throw std::invalid_argument{"shared block " + std::string{name} + " is of another type"};
    const std::size_t size = element_bytes(kind);
    if (index >= block.count || (index + 1) * size > small_[line]->reach_bytes()) {
        throw std::out_of_range{"shared block " + std::string{name} + " has no element " + std::to_string(index)};
    }
    return small_[line]->bytes() + index * size;
}

std::uint32_t& host_blocks::handle(std::string_view name, std::size_t index) const
{
    return *reinterpret_cast<std::uint32_t*>(element(name, index, element::text));
}

std::string host_blocks::text(std::string_view name, std::size_t index) const
{
    std::size_t length = 0;
    const char* words = texts_.get(handle(name, index), &length);
    return {words, length};
}

void host_blocks::set_text(std::string_view name, std::size_t index, std::string_view text)
{
    std::uint32_t& place = handle(name, index);
    const std::uint32_t fresh = text.empty() ? 0 : texts_.make(text.data(), text.size());
    if (fresh == 0 && !text.empty()) throw std::runtime_error{"no memory for a text"};
    texts_.free(std::exchange(place, fresh));
}

void host_blocks::create_buffer(std::int32_t buflength)
{
    if (buflength < 0) throw std::invalid_argument{"a buffer of " + std::to_string(buflength) + " bytes"};
    drop_buffer();
    const auto wanted = static_cast<std::uint32_t>(ibuffer_bytes(buflength));
    auto buffer = std::make_unique<shared_object>(name_space_ + big_block_object(big_blocks[0].name), wanted);
    if (buffer->reach_bytes() < wanted) {
        throw std::runtime_error{"the shared buffer belongs to another program and is too small: it has " +
                                 std::to_string(buffer->reach_bytes()) + " bytes, " + std::to_string(wanted) +
                                 " are needed"};
    }
    const block_info& second = big_blocks[1];
    ibuffer66_ = std::make_unique<shared_object>(name_space_ + big_block_object(second.name), second.mapped_bytes);
    ibuffer_ = std::move(buffer);
    value<std::int32_t>("buflength") = buflength;
}

void host_blocks::drop_buffer()
{
    ibuffer_.reset();
    ibuffer66_.reset();
}

std::span<std::uint8_t> host_blocks::buffer()
{
    if (ibuffer_ == nullptr) return {};
    return {ibuffer_->bytes(), static_cast<std::size_t>(ibuffer_bytes(value<std::int32_t>("buflength")))};
}

void host_blocks::withdraw_names()
{
    for (const auto& block : small_) block->withdraw_name();
    for (const auto* block : {ibuffer_.get(), ibuffer66_.get()}) {
        if (block != nullptr) block->withdraw_name();
    }
}

std::int16_t first_free_instance(const std::string& name_space)
{
    constexpr std::int16_t instances = 101;
    for (std::int16_t num = 0; num < instances; ++num) {
        const std::string object = name_space + small_block_object(small_blocks.front().name, num);
        const named_memory::handle probe = named_memory::open(object);
        if (probe == 0) return num;
        named_memory::close(probe, object);
    }
    throw std::runtime_error{"all " + std::to_string(instances) + " instances are in use"};
}

}  // namespace tamrix::host
