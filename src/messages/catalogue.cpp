#include "messages/catalogue.h"

#include "base/errors.h"
#include "messages/catalogue_data.h"

#include <algorithm>
#include <cstddef>

namespace tamrix {

namespace {

using catalogue_data::language_block;

std::string text_in(int language, std::span<const std::string_view> language_block::*list, std::size_t index)
{
    for (const language_block& block : catalogue_data::blocks()) {
        const auto texts = block.*list;
        if (block.offset == language && index < texts.size()) return std::string{texts[index]};
    }
    throw resource_error{"no language with offset " + std::to_string(language)};
}

}  // namespace

std::string LoadResString(int number)
{
    constexpr int block_size = 3000;
    const int base = number % block_size;
    for (const auto& block : catalogue_data::blocks()) {
        if (block.offset != number - base) continue;
        const auto found = std::ranges::lower_bound(block.texts, base, {}, &catalogue_data::message::base);
        if (found != block.texts.end() && found->base == base) return std::string{found->text};
    }
    throw resource_error{"no text with number " + std::to_string(number)};
}

std::string answer_text(int language, forms::answer which)
{
    return text_in(language, &language_block::answers, static_cast<std::size_t>(which));
}

std::string hint_text(int language, hint which)
{
    return text_in(language, &language_block::hints, static_cast<std::size_t>(which));
}

bool has_language(int offset)
{
    const auto blocks = catalogue_data::blocks();
    return std::ranges::find(blocks, offset, &language_block::offset) != blocks.end();
}

}  // namespace tamrix
