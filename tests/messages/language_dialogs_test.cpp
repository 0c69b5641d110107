#include "entry/all_dialogs.h"
#include "entry/plug_in_with_dialogs.h"
#include "languages.h"
#include "support/recording_programmer.h"
#include "support/temp_files.h"
#include "transfer/readfile.h"
#include "transfer/writefile.h"
#include "ttl/dialogs/ttladd.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace tamrix::tests {
namespace {

TEST(languages, have_a_mnemonic_where_english_has_one)
{
    std::size_t seen = 0;
    for_each_translation([&seen](const pair_of_texts& texts) {
        const std::u32string found = mnemonics_of(texts.translated);
        ASSERT_EQ(found.size(), mnemonics_of(texts.english).size());
        EXPECT_EQ(std::ranges::count(texts.translated, '&'), std::ranges::count(texts.english, '&'));
        if (found.empty()) return;
        ++seen;
        const char32_t letter = found.front();
        switch (texts.in.mnemonics) {
        case mnemonic_style::latin: EXPECT_TRUE(is_latin_letter(letter)) << "not on every keyboard"; break;
        case mnemonic_style::cyrillic: EXPECT_TRUE(is_cyrillic_letter(letter)); break;
        case mnemonic_style::appended:
            EXPECT_TRUE(texts.translated.ends_with(")") && texts.translated.find("(&") == texts.translated.size() - 4);
            EXPECT_TRUE(letter >= U'A' && letter <= U'Z');
        }
    });
    EXPECT_GE(seen, 6u) << "English alone has six";
}

std::string caption_of(const forms::control& one)
{
    if (const auto* label = dynamic_cast<const forms::label*>(&one)) return label->caption();
    if (const auto* frame = dynamic_cast<const forms::frame*>(&one)) return frame->caption();
    if (const auto* button = dynamic_cast<const forms::button*>(&one)) return button->caption();
    if (const auto* option = dynamic_cast<const forms::option*>(&one)) return option->caption();
    return {};
}

/// A dialog as a person finds it in one of its states.
struct shown_dialog {
    std::string name;
    std::vector<std::string> captions;  // of the controls that can be seen and have a mnemonic
};

class dialogs_in_a_language : public testing::Test {
protected:
    dialogs_in_a_language()
    {
        session.syspath = folder.path("");
        std::filesystem::create_directory(folder.path("lib"));
        session.hardware.source = tests::recording_programmer(calls_);
    }

    std::vector<shown_dialog> all_in(int offset)
    {
        shown_.clear();
        session.blocks.Language(0) = offset;
        show<readfile>("readfile", variables.transfer);
        show<writefile>("writefile", variables.transfer);
        show<ttladd>("ttladd", variables.ttl);
        show_from_table("ttlautotest");
        for (const std::uint8_t face : {0, 1}) {  // ttltest and ttledit have two faces each
            variables.ttl.ttleditlib = face;
            variables.ttl.wnote = face;
            for (const std::string_view name : tests::all_dialogs) show_from_table(name);
        }
        return shown_;
    }

    plug_in_fixture plug_in;
    tamrix::session& session = plug_in.session;
    module_variables& variables = plug_in.variables;

private:
    template <class Dialog>
    void show(const char* name, auto&... variables_used)
    {
        Dialog dialog{session, variables_used...};
        plug_in.shell.during(dialog, [&] { note(name, dialog); });
    }
    /// A dialog that does not exist yet is not there to be tested.
    void show_from_table(std::string_view name)
    {
        if (!table_.has(name)) return;
        variables.selftest.pinmapmode = 0;
        if (name == "analyzer" || name == "recetwave") plug_in.shell.on_next_dialog([](forms::form&) {});  // its map
        plug_in.shell.on_next_dialog([this, name](forms::form& dialog) { note(std::string{name}, dialog); });
        table_.show(name, session, variables);
    }
    void note(const std::string& name, const forms::form& dialog)
    {
        shown_dialog found{name, {}};
        for (const forms::control* one : dialog.controls())
            if (one->visible() && !mnemonics_of(caption_of(*one)).empty()) found.captions.push_back(caption_of(*one));
        shown_.push_back(found);
    }

    tests::recording calls_;
    temp_folder folder;
    dialog_table table_ = tamrix::all_dialogs();
    std::vector<shown_dialog> shown_;
};

TEST_F(dialogs_in_a_language, never_have_a_mnemonic_twice)
{
    for (const language& in : languages) {
        if (texts_of(in.offset).empty()) continue;  // the test that counts the languages says so
        for (const shown_dialog& dialog : all_in(in.offset)) {
            std::map<char32_t, std::string> taken;
            for (const std::string& caption : dialog.captions) {
                const auto [other, is_new] = taken.emplace(lower_case(mnemonics_of(caption).front()), caption);
                EXPECT_TRUE(is_new) << in.name << ", " << dialog.name << ": \"" << other->second << "\" and \""
                                    << caption << '"';
            }
        }
    }
}

TEST_F(dialogs_in_a_language, show_five_mnemonics_in_the_vector_editor)
{
    std::size_t editors = 0;
    for (const language& in : languages) {
        if (texts_of(in.offset).empty()) continue;
        for (const shown_dialog& dialog : all_in(in.offset)) {
            if (dialog.name != "ttledit") continue;
            ++editors;
            EXPECT_EQ(dialog.captions.size(), 5u) << in.name;
        }
    }
    EXPECT_GE(editors, 4u) << "English alone, which stands twice, has four";
}

TEST_F(dialogs_in_a_language, change_their_language_at_the_next_opening)
{
    readfile dialog{session, variables.transfer};
    plug_in.shell.during(dialog, [&] {
        EXPECT_EQ(dialog.caption(), "Load A File To Buffer");
        session.blocks.Language(0) = 12000;
        EXPECT_EQ(dialog.caption(), "Load A File To Buffer") << "an open dialog keeps its language";
    });
    readfile next{session, variables.transfer};
    plug_in.shell.during(next, [&] {
        EXPECT_EQ(next.caption(), "Wczytywanie pliku do bufora");
        EXPECT_EQ(next.exitcom.caption(), "Anuluj");
    });
}

}  // namespace
}  // namespace tamrix::tests
