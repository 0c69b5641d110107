// What a script that a test has written says next.
#pragma once

#include <deque>
#include <utility>

namespace tamrix::tests {

/// Takes the first entry out of the script; `otherwise` if it is empty.
template <class T>
T next_of(std::deque<T>& script, T otherwise)
{
    if (script.empty()) return otherwise;
    T next = std::move(script.front());
    script.pop_front();
    return next;
}

}  // namespace tamrix::tests
