// Strict reading of a text in a test, in pieces of any size.
#pragma once

#include "files/byte_source.h"
#include "verify/verification.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::tests {

using texts = std::vector<std::string>;

/// Gives a few bytes at a time, as a pipe may.
class piecemeal_source final : public byte_source {
public:
    /// The text has to outlive it.
    explicit piecemeal_source(std::string_view text, std::size_t piece = 65536) : rest_{text}, piece_{piece} {}
    std::size_t read(std::span<std::uint8_t> target) override
    {
        const std::size_t count = std::min({target.size(), rest_.size(), piece_});
        std::copy_n(rest_.begin(), count, target.begin());
        rest_.remove_prefix(count);
        return count;
    }

private:
    std::string_view rest_;
    std::size_t piece_;
};

inline texts texts_of(const verification& result)
{
    texts all;
    for (const diagnostic& one : result.remarks) all.push_back(one.text());
    return all;
}

}  // namespace tamrix::tests
