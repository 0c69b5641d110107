#include "messages/catalogue.h"

#include "base/errors.h"
#include "messages/catalogue_data.h"

#include <algorithm>

namespace tamrix {

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
    const auto index = static_cast<std::size_t>(which);
    for (const auto& block : catalogue_data::blocks()) {
        if (block.offset == language && index < block.answers.size()) return std::string{block.answers[index]};
    }
    throw resource_error{"no language with offset " + std::to_string(language)};
}

bool has_language(int offset)
{
    const auto blocks = catalogue_data::blocks();
    return std::ranges::find(blocks, offset, &catalogue_data::language_block::offset) != blocks.end();
}

}  // namespace tamrix
