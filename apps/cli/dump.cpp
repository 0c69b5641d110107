// The bytes of a file as a table.
#include "cli/image_commands.h"

#include "base/arith.h"
#include "cli/convert_options.h"

#include <array>

namespace tamrix::cli {

namespace {

constexpr std::size_t bytes_a_line = 16;

/// Gathers the bytes of a line, which may come in pieces and have gaps.
class dump_lines {
public:
    explicit dump_lines(console& con) : con_{con} {}
    void take(std::uint64_t address, std::uint8_t byte)
    {
        if (!line_ || *line_ != address / bytes_a_line) begin(address / bytes_a_line);
        bytes_[address % bytes_a_line] = byte;
    }
    void finish()
    {
        if (line_) print();
    }

private:
    void begin(std::uint64_t line)
    {
        finish();
        if (line_ && line > *line_ + 1) con_.line("");
        line_ = line;
        bytes_.fill(std::nullopt);
    }
    void print() const
    {
        std::string text = arith::hex_fixed(*line_ * bytes_a_line, 8) + " ", letters;
        for (std::size_t i = 0; i < bytes_a_line; ++i) {
            if (i % 8 == 0) text += ' ';
            text += (bytes_[i] ? arith::hex_fixed(*bytes_[i], 2) : "  ") + " ";
            const char letter = bytes_[i] ? static_cast<char>(*bytes_[i]) : ' ';
            letters += letter >= ' ' && letter <= '~' ? letter : '.';
        }
        con_.line(text + " |" + letters + "|");
    }

    console& con_;
    std::optional<std::uint64_t> line_;
    std::array<std::optional<std::uint8_t>, bytes_a_line> bytes_{};
};

}  // namespace

void dump(const file_words& words, console& con)
{
    const image_options options = check(words.image);
    memory_image image;
    const image_file file = read_image(checked_input(words.files.front()), format_to_load(words.from), image);
    judge(file, options.accept_damage, con);
    apply(options, image);
    if (options.fill) fill_gaps(image, image.extent(), *options.fill);
    dump_lines lines{con};
    image.visit([&](std::uint64_t address, std::span<const std::uint8_t> bytes) {
        for (const std::uint8_t byte : bytes) lines.take(address++, byte);
    });
    lines.finish();
}

}  // namespace tamrix::cli
