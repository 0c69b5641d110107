#include "blocks/text_heap.h"

#include "tamrix/text_heap.h"

#include <mutex>
#include <unordered_map>

namespace tamrix::text_heap {

namespace {

// Handles must mean the same to host and plug-in, so this one store belongs to the process, not to a session.
struct store {
    std::mutex guard;
    std::unordered_map<std::uint32_t, std::string> texts;
    std::uint32_t next = 1;
};

store& heap()
{
    static store the_store;
    return the_store;
}

std::uint32_t keep(std::string_view text)
{
    store& all = heap();
    const std::lock_guard lock{all.guard};
    while (all.next == 0 || all.texts.contains(all.next)) ++all.next;
    const std::uint32_t handle = all.next++;
    all.texts.emplace(handle, text);
    return handle;
}

}  // namespace

std::uint32_t make(std::string_view text) { return text.empty() ? 0 : keep(text); }

std::string get(std::uint32_t handle)
{
    std::size_t length = 0;
    const char* text = tamrix_text_get(handle, &length);
    return {text, length};
}

void free(std::uint32_t handle) noexcept
{
    store& all = heap();
    const std::lock_guard lock{all.guard};
    all.texts.erase(handle);
}

}  // namespace tamrix::text_heap

std::uint32_t tamrix_text_new(const char* text, std::size_t length_bytes) noexcept
{
    try {
        return tamrix::text_heap::keep({text, length_bytes});
    } catch (...) {
        return 0;
    }
}

const char* tamrix_text_get(std::uint32_t handle, std::size_t* length_bytes) noexcept
{
    auto& all = tamrix::text_heap::heap();
    const std::lock_guard lock{all.guard};
    const auto found = all.texts.find(handle);
    const bool known = found != all.texts.end();
    if (length_bytes != nullptr) *length_bytes = known ? found->second.size() : 0;
    return known ? found->second.c_str() : "";
}

void tamrix_text_free(std::uint32_t handle) noexcept { tamrix::text_heap::free(handle); }

std::size_t tamrix_text_count() noexcept
{
    auto& all = tamrix::text_heap::heap();
    const std::lock_guard lock{all.guard};
    return all.texts.size();
}
