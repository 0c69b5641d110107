// Finding and replacing in the main window.
#include "host/image_text.h"
#include "workbench/byte_editor.h"
#include "workbench/long_work.h"
#include "workbench/text.h"

#include <algorithm>
#include <utility>

namespace tamrix::workbench {

editing::byte_range byte_editor::search_range(const search_words& words) const
{
    return words.in_selection ? searched_ : editing::byte_range{0, document_.bytes().size()};
}

wxString byte_editor::look_for(const search_words& words, editing::direction way)
{
    const bool forward = way == editing::direction::forward;
    const auto pattern = editing::search_pattern(to_utf8(words.sought));
    const editing::byte_range selected = view_.cursor().selection();
    const std::size_t here = selected.empty() ? view_.cursor().address() : selected.first;
    const std::size_t start = forward ? here + 1 : here > 0 ? here - 1 : document_.bytes().size();
    editing::byte_finder finder{document_.bytes(), pattern, search_range(words), start, way};
    const bool ended = work_in_steps(
        &window_, "Find", L"Searching the buffer…", [&] { return finder.look(); }, [&] { return finder.percent(); });
    const auto place = ended ? finder.found() : std::nullopt;
    if (!place) return {};
    view_.select({*place, pattern.size()});
    if (!finder.wrapped() && !(here == 0 && !forward)) return wxString::Format("Found at %08zX", *place);
    const wxString area = words.in_selection ? "selection" : "buffer";
    return forward ? wxString::Format("Found at %08zX, on from the beginning of the %s", *place, area)
                   : wxString::Format("Found at %08zX, on from the end of the %s", *place, area);
}

void byte_editor::find()
{
    if (!can_edit()) return;
    const editing::byte_range selected = view_.cursor().selection();
    find_dialog dialog{&window_, words_, selected, false};
    if (dialog.ShowModal() == wxID_OK && !dialog.words().sought.empty()) {
        const wxString replacement = words_.replacement;
        words_ = dialog.words();
        words_.replacement = replacement;
        searched_ = selected;
        find_next(editing::direction::forward);
    }
    view_.SetFocus();
}

void byte_editor::find_next(editing::direction way)
{
    if (words_.sought.empty()) return find();
    const wxString found = look_for(words_, way);
    notice(found.empty() ? "Not found: " + words_.sought : found);
    view_.SetFocus();
}

/// The length is the device's, so what replaces bytes is as long as they are.
std::optional<std::vector<std::uint8_t>> byte_editor::replacement(const search_words& words, wxString& trouble) const
{
    const std::size_t sought = editing::search_pattern(to_utf8(words.sought)).size();
    auto bytes = editing::search_pattern(to_utf8(words.replacement));
    if (sought == 0) {
        trouble = "There is nothing to find.";
    } else if (bytes.size() != sought) {
        trouble = "The replacement has " + to_wx(host::bytes_text(bytes.size())) +
                  "; it must have as many as what is replaced, " + to_wx(host::bytes_text(sought)) + ".";
    } else {
        return bytes;
    }
    return std::nullopt;
}

/// Replaces what is selected if it is what is looked for, and goes on to the next place.
wxString byte_editor::replace_here(const search_words& words)
{
    wxString said;
    const auto bytes = replacement(words, said);
    if (!bytes) return said;
    const editing::byte_range selected = view_.cursor().selection();
    const auto pattern = editing::search_pattern(to_utf8(words.sought));
    const auto there = document_.bytes().subspan(selected.first, selected.length);
    if (std::ranges::equal(there, pattern)) {
        document_.replace(selected.first, *bytes, "Replace");
        said = wxString::Format("Replaced at %08zX. ", selected.first);
    }
    const wxString next = look_for(words, editing::direction::forward);
    return said + (next.empty() ? "Not found: " + words.sought : next);
}

wxString byte_editor::replace_all(const search_words& words)
{
    wxString said;
    const auto bytes = replacement(words, said);
    if (!bytes) return said;
    const auto pattern = editing::search_pattern(to_utf8(words.sought));
    const auto places = editing::all_places(document_.bytes(), pattern, search_range(words));
    document_.replace_each(places, *bytes, "Replace All");
    if (places.empty()) return "Not found: " + words.sought;
    said = places.size() == 1 ? wxString{"1 place replaced"} : wxString::Format("%zu places replaced", places.size());
    on_remark(to_utf8(words.sought + " -> " + words.replacement + ": " + said));
    return said;
}

void byte_editor::replace()
{
    if (!can_edit()) return;
    searched_ = view_.cursor().selection();
    find_dialog dialog{&window_, words_, searched_, true};
    const auto answer = [&](wxString (byte_editor::*step)(const search_words&)) {
        return [this, &dialog, step] {
            words_ = dialog.words();
            dialog.say((this->*step)(words_));
        };
    };
    dialog.on_find = [&] {
        words_ = dialog.words();
        const wxString found = words_.sought.empty() ? wxString{} : look_for(words_, editing::direction::forward);
        dialog.say(found.empty() ? "Not found: " + words_.sought : found);
    };
    dialog.on_replace = answer(&byte_editor::replace_here);
    dialog.on_replace_all = answer(&byte_editor::replace_all);
    dialog.ShowModal();
    view_.SetFocus();
}

}  // namespace tamrix::workbench
