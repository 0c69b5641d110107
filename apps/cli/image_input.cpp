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

/// A source whose first bytes have been looked at already.
class looked_at final : public byte_source {
public:
    explicit looked_at(std::unique_ptr<byte_source> from) : from_{std::move(from)}, head_(detection_head_bytes)
    {
        head_.resize(from_->read(head_));
    }
    std::span<const std::uint8_t> head() const { return head_; }
    std::size_t read(std::span<std::uint8_t> target) override
    {
        const std::size_t from_head = std::min(target.size(), head_.size() - given_);
        std::copy_n(head_.begin() + static_cast<std::ptrdiff_t>(given_), from_head, target.begin());
        given_ += from_head;
        return from_head + (from_head < target.size() ? from_->read(target.subspan(from_head)) : 0);
    }

private:
    std::unique_ptr<byte_source> from_;
    std::vector<std::uint8_t> head_;
    std::size_t given_ = 0;
};

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

int format_of(const looked_at& source, const std::string& path)
{
    // Of a pipe nobody knows the length before its end.
    const bool whole = source.head().size() < detection_head_bytes;
    const auto length =
        whole ? static_cast<std::int64_t>(source.head().size()) : std::numeric_limits<std::int64_t>::max();
    return detect_format({source.head(), length}, path).index;
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
    looked_at source{std::make_unique<read_ahead>(std::move(from))};
    const int index = format   ? *format
                      : length ? detect_format({source.head(), *length}, word.path).index
                               : format_of(source, "");
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
