#include "cli/image_input.h"

#include "cli/standard_streams.h"
#include "files/background_io.h"
#include "files/byte_source.h"
#include "formats/formats.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <stdexcept>

namespace tamrix::cli {

namespace {

/// Puts the bytes of a file where its word says.
class placing_taker final : public data_taker {
public:
    placing_taker(const input_word& word, data_taker& to) : word_{word}, to_{to} {}
    void take(std::uint64_t address, std::span<const std::uint8_t> bytes) override
    {
        if (word_.step == 1) return to_.take(word_.address + address, bytes);
        for (std::size_t i = 0; i < bytes.size(); ++i)
            to_.take(word_.address + word_.step * (address + i) + word_.phase, bytes.subspan(i, 1));
    }

private:
    const input_word& word_;
    data_taker& to_;
};

/// Of a pipe nobody knows the length before its end.
std::int64_t known_length(std::span<const std::uint8_t> head)
{
    return head.size() < detection_head_bytes ? static_cast<std::int64_t>(head.size())
                                              : std::numeric_limits<std::int64_t>::max();
}

std::int64_t length_of(const std::string& path) { return input_file{path}.length(); }

image_file read_file(const input_word& word, std::optional<int> format, data_taker& into)
{
    image_file made;
    std::unique_ptr<byte_source> from;
    std::optional<std::int64_t> length;
    if (word.is_standard_input()) {
        made.name = "standard input";
        from = std::make_unique<standard_input>();
    } else {
        made.name = word.path;
        from = std::make_unique<file_source>(word.path);
        length = length_of(word.path);
    }
    read_ahead source{std::move(from)};
    const auto head = source.head(detection_head_bytes);
    const file_start start{head, length.value_or(known_length(head))};
    const int index = format ? *format : detect_format(start, length ? word.path : "").index;
    made.format = formats()[static_cast<std::size_t>(index)].name;
    placing_taker placed{word, into};
    made.found = verifier_of(made.format)(source, made.name, placed);
    return made;
}

[[noreturn]] void refuse_without_data(const image_file& file)
{
    if (file.format == "binary") fail(file.name + ": an empty file");
    const auto& remarks = file.found.remarks;
    fail(file.name + ": no data of the format " + file.format + " in it" +
         (remarks.size() > 1 ? "; " + remarks.front().text() : ""));
}

/// Of the last one with those before it.
void refuse_overlap(const std::vector<image_file>& files)
{
    const image_file& added = files.back();
    for (const image_file& other : std::span{files}.first(files.size() - 1)) {
        if (const auto twice = first_common(added.filled, other.filled))
            fail(added.name + ": " + range_text(*twice) + " is in " + other.name +
                 " too; --overlap last takes the bytes of the file that is named last");
    }
}

}  // namespace

image_file verified(const input_word& input, std::optional<int> format)
{
    class : public data_taker {
        void take(std::uint64_t, std::span<const std::uint8_t>) override {}
    } nobody;
    try {
        return read_file(input, format, nobody);
    } catch (const file_error& error) {
        fail(error.what());
    }
}

image_file read_image(const input_word& input, std::optional<int> format, memory_image& into)
{
    try {
        image_file file = read_file(input, format, into);
        file.filled = into.filled();
        if (into.empty()) refuse_without_data(file);
        return file;
    } catch (const file_error& error) {
        fail(error.what());
    } catch (const std::out_of_range&) {
        fail(input.path + ": an address that is too high");
    }
}

image_inputs read_inputs(const std::vector<input_word>& inputs, std::optional<int> format, overlap_rule overlap)
{
    image_inputs made;
    if (inputs.size() == 1) {
        made.files.push_back(read_image(inputs.front(), format, made.image));
        return made;
    }
    for (const input_word& word : inputs) {
        memory_image alone;
        made.files.push_back(read_image(word, format, alone));
        if (overlap == overlap_rule::refuse) refuse_overlap(made.files);
        alone.visit(
            [&](std::uint64_t address, std::span<const std::uint8_t> bytes) { made.image.take(address, bytes); });
    }
    return made;
}

void judge(std::span<const image_file> files, bool accept_damage, console& con)
{
    for (const image_file& file : files) tell_remarks(file.name, file.found, con);
    if (std::ranges::any_of(files, [](const image_file& file) { return file.found.damaged(); }))
        judge_damage(accept_damage, con);
}

}  // namespace tamrix::cli
