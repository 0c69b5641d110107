// Writes JSON: the pieces are texts that are JSON already.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix::cli::json {

/// `text` is UTF-8.
std::string string(std::string_view text);
/// Empty values are left out.
std::string object(std::initializer_list<std::pair<std::string_view, std::string>> members);
std::string array(const std::vector<std::string>& elements);

}  // namespace tamrix::cli::json
