// What a document has to be, the plain way: vectors that are copied whole.
#pragma once

#include "editing/device_buffers.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tamrix::tests {

class plain_document {
public:
    using bytes = std::vector<std::uint8_t>;
    explicit plain_document(const device_buffers& buffers) : buffers_{buffers} {}

    bytes all{}, saved_all{};
    std::size_t shown = 0;
    std::string device{};
    bool content = false;

    bool changed() const { return all != saved_all || rest_ != saved_rest_; }
    bytes visible() const { return {all.begin(), at(shown)}; }
    std::string undo_name() const { return undo_.empty() ? std::string{} : undo_.back().name; }
    std::string redo_name() const { return redo_.empty() ? std::string{} : redo_.back().name; }
    std::size_t steps() const { return undo_.size(); }

    void edit(const std::string& name, const bytes& now, bool drops)
    {
        const bool drops_some = drops && all.size() > shown;
        step made{.name = name, .before = visible(), .after = now};
        std::copy(now.begin(), now.end(), all.begin());
        if (drops_some) {
            made.rest = rest{.number = ++last_rest_};
            exchange(*made.rest);
        }
        if (made.before != now || drops_some) {
            made.begins_content = !content;
            add(std::move(made));
        }
        content = true;
    }
    void change_device(const std::string& name)
    {
        if (name == device) return;
        const std::string before = device;
        enter(name);
        if (!before.empty()) add({.name = "Device", .device = before});
    }
    void undo() { carry_out(undo_, redo_, false); }
    void redo() { carry_out(redo_, undo_, true); }
    void save()
    {
        saved_all = all;
        saved_rest_ = rest_;
        ++saves_;
    }
    bytes::const_iterator at(std::size_t address) const { return all.begin() + static_cast<std::ptrdiff_t>(address); }

private:
    struct rest {
        bytes hidden{}, saved{};
        std::uint64_t number = 0;
        int save = 0;
    };
    struct step {
        std::string name{};
        bytes before{}, after{};
        std::string device{};
        std::optional<tests::plain_document::rest> rest{};
        bool begins_content = false;
    };

    void add(step made)
    {
        redo_.clear();
        undo_.push_back(std::move(made));
    }
    bytes cut(bytes& from) const
    {
        bytes tail{from.begin() + static_cast<std::ptrdiff_t>(shown), from.end()};
        from.resize(shown);
        return tail;
    }
    void exchange(rest& one)
    {
        rest now{cut(all), cut(saved_all), rest_, saves_};
        if (one.save != saves_) one.saved = one.hidden;
        all.insert(all.end(), one.hidden.begin(), one.hidden.end());
        saved_all.insert(saved_all.end(), one.saved.begin(), one.saved.end());
        rest_ = one.number;
        one = std::move(now);
    }
    void enter(const std::string& name)
    {
        const auto [length, blank] = buffers_.devices.at(name);
        if (!content && !changed()) {
            all.clear();
            saved_all.clear();
        }
        if (all.size() < length) {
            all.resize(length, blank);
            saved_all.resize(length, blank);
        }
        shown = length;
        device = name;
    }
    void carry_out(std::vector<step>& from, std::vector<step>& to, bool forward)
    {
        if (from.empty()) return;
        step one = std::move(from.back());
        from.pop_back();
        if (!one.device.empty()) {
            std::string here = device;
            enter(one.device);
            one.device = std::move(here);
        } else {
            const bytes& now = forward ? one.after : one.before;
            std::copy(now.begin(), now.end(), all.begin());
            if (one.rest) exchange(*one.rest);
            if (one.begins_content) content = forward;
        }
        to.push_back(std::move(one));
    }

    const device_buffers& buffers_;
    std::vector<step> undo_{}, redo_{};
    std::uint64_t rest_ = 0, saved_rest_ = 0, last_rest_ = 0;
    int saves_ = 0;
};

}  // namespace tamrix::tests
