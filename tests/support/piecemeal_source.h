// A source that gives a few bytes at a time, as a pipe may.
#pragma once

#include "files/byte_source.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix::tests {

class piecemeal_source final : public byte_source {
public:
    static constexpr std::size_t usual_piece = 65536;

    /// The bytes have to outlive it; `piece` is how many come at a time, at most.
    explicit piecemeal_source(std::span<const std::uint8_t> bytes, std::size_t piece = usual_piece)
        : rest_{bytes}, piece_{piece}
    {}
    explicit piecemeal_source(std::string_view text, std::size_t piece = usual_piece)
        : piecemeal_source{std::span{reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, piece}
    {}
    std::size_t read(std::span<std::uint8_t> target) override
    {
        const std::size_t count = std::min({target.size(), rest_.size(), piece_});
        std::copy_n(rest_.begin(), count, target.begin());
        rest_ = rest_.subspan(count);
        return count;
    }
    /// In memory that does not outlast the next call.
    std::span<const std::uint8_t> lend(std::span<std::uint8_t>) override
    {
        std::vector<std::uint8_t> fresh(std::min(rest_.size(), piece_));
        read(fresh);
        lent_ = std::move(fresh);
        return lent_;
    }

private:
    std::span<const std::uint8_t> rest_;
    std::size_t piece_;
    std::vector<std::uint8_t> lent_;
};

}  // namespace tamrix::tests
