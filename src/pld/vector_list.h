// The test vectors of one device.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace tamrix {

/// 3001 texts of 48 characters. An entry never stored is all NUL and so holds no blank; a stored one is left-aligned
/// and padded with blanks.
class vector_list {
public:
    static constexpr std::size_t entries = 3001;
    static constexpr std::size_t width = 48;

    /// Entry `index`, from 0; all 48 characters.
    std::string_view operator()(std::size_t index) const { return {texts_.at(index).data(), width}; }
    /// Stores the first 48 characters of `text`.
    void store(std::size_t index, std::string_view text)
    {
        auto& entry = texts_.at(index);
        entry.fill(' ');
        text.substr(0, width).copy(entry.data(), width);
    }

private:
    std::vector<std::array<char, width>> texts_{entries};
};

}  // namespace tamrix
