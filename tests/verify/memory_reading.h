// What a strict reading of a text says, for tests.
#pragma once

#include "support/piecemeal_source.h"
#include "verify/verification.h"

#include <string>
#include <vector>

namespace tamrix::tests {

using texts = std::vector<std::string>;

inline texts texts_of(const verification& result)
{
    texts all;
    for (const diagnostic& one : result.remarks) all.push_back(one.text());
    return all;
}

}  // namespace tamrix::tests
