#include "sim/fault_sentence.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tamrix::sim {

namespace {

std::vector<std::string> words_of(std::string_view text)
{
    std::vector<std::string> words;
    std::string word;
    for (const char letter : text) {
        if (letter != ' ' && letter != '\t') {
            word += letter;
        } else if (!word.empty()) {
            words.push_back(std::exchange(word, {}));
        }
    }
    if (!word.empty()) words.push_back(word);
    return words;
}

}  // namespace

sentence::sentence(std::string_view text) : text_{text}, words_{words_of(text)} {}

bool sentence::starts(std::string_view phrase)
{
    std::size_t at = next_;
    for (std::size_t begin = 0; begin < phrase.size(); ++at) {
        const std::size_t end = std::min(phrase.find(' ', begin), phrase.size());
        if (at == words_.size() || words_[at] != phrase.substr(begin, end - begin)) return false;
        begin = end + 1;
    }
    next_ = at;
    return true;
}

int sentence::number(int lowest, int highest)
{
    const std::string range = "a number from " + std::to_string(lowest) + " to " + std::to_string(highest);
    if (ended()) fail(range);
    const std::string& word = words_[next_];
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc{} || end != word.data() + word.size() || value < lowest || value > highest) fail(range);
    ++next_;
    return value;
}

std::optional<int> sentence::ends(std::string_view phrase, int highest)
{
    const auto wanted = words_of(phrase);
    if (words_.size() - next_ <= wanted.size()) return std::nullopt;
    const std::size_t first = words_.size() - wanted.size() - 1;
    if (!std::equal(wanted.begin(), wanted.end(), words_.begin() + static_cast<std::ptrdiff_t>(first)))
        return std::nullopt;
    const std::size_t before = std::exchange(next_, words_.size() - 1);
    const int value = number(1, highest);
    next_ = before;
    words_.resize(first);
    return value;
}

void sentence::end() const
{
    if (!ended()) fail("the end");
}

void sentence::fail(const std::string& expected) const
{
    const std::string found = ended() ? "its end" : "\"" + words_[next_] + "\"";
    throw fault_error{"fault \"" + text_ + "\": " + found + " where " + expected + " was expected"};
}

}  // namespace tamrix::sim
