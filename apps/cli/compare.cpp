// Whether two files hold the same.
#include "cli/image_commands.h"

#include "base/arith.h"
#include "cli/convert_options.h"

#include <algorithm>

namespace tamrix::cli {

namespace {

segment_list unequal(const memory_image& a, const memory_image& b)
{
    segment_list found;
    a.visit([&](std::uint64_t address, std::span<const std::uint8_t> bytes) {
        b.visit({address, bytes.size()}, [&](std::uint64_t there, std::span<const std::uint8_t> others) {
            const auto own = bytes.subspan(there - address, others.size());
            for (auto at = std::ranges::mismatch(own, others); at.in1 != own.end();
                 at = std::ranges::mismatch(at.in1 + 1, own.end(), at.in2 + 1, others.end()))
                found.add({there + static_cast<std::uint64_t>(at.in1 - own.begin()), 1});
        });
    });
    return found;
}

void list(const std::string& what, const segment_list& stretches, bool all, console& con)
{
    constexpr std::size_t most_shown = 5;
    const auto each = stretches.all();
    if (each.empty()) return;
    con.line(what + ": " + bytes_text(stretches.bytes()));
    const std::size_t shown = all ? each.size() : std::min(each.size(), most_shown);
    for (std::size_t i = 0; i < shown; ++i) con.line("  " + range_text(each[i]));
    if (shown < each.size()) con.line("  and " + std::to_string(each.size() - shown) + " more; --list shows all");
}

std::string byte_text(const memory_image& image, std::uint64_t address)
{
    const auto byte = image.at(address);
    return byte ? arith::hex_fixed(*byte, 2) : "nothing";
}

}  // namespace

void compare(const file_words& words, console& con)
{
    const auto format = format_to_load(words.from);
    memory_image a, b;
    const image_file file_a = read_image(checked_input(words.files.at(0)), format, a);
    const image_file file_b = read_image(checked_input(words.files.at(1)), format, b);
    judge(file_a, words.image.accept_damage, con);
    judge(file_b, words.image.accept_damage, con);
    const segment_list in_both = unequal(a, b), only_a = without(a.filled(), b.filled()),
                       only_b = without(b.filled(), a.filled());
    std::optional<std::uint64_t> first;
    for (const segment_list* one : {&in_both, &only_a, &only_b}) {
        if (!one->all().empty()) first = std::min(first.value_or(image_address_limit), one->all().front().first);
    }
    if (!first) return con.line("equal: " + extent_text(a.filled()));
    con.line("first difference at " + address_text(*first) + ": " + byte_text(a, *first) + " in " + file_a.name + ", " +
             byte_text(b, *first) + " in " + file_b.name);
    list("other bytes", in_both, words.list, con);
    list("only in " + file_a.name, only_a, words.list, con);
    list("only in " + file_b.name, only_b, words.list, con);
    throw command_error{exit_failed, ""};
}

}  // namespace tamrix::cli
