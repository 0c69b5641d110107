// A plug-in with a save dialog that a test fills in as a person would.
#pragma once

#include "support/plug_in_fixture.h"
#include "support/temp_files.h"
#include "transfer/writefile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

namespace tamrix::tests {

struct save_fixture : plug_in_fixture {
    using plug_in_fixture::plug_in_fixture;

    /// Calls the entry method, and runs `steps` in the dialog.
    void save(const std::string& name, std::function<void(writefile&)> steps)
    {
        shell.on_next_dialog([&](forms::form& shown) {
            steps(dynamic_cast<writefile&>(shown));
            stayed_open = shown.is_open();
        });
        std::string file = name, folder = files.path("");
        EXPECT_TRUE(methods.wfile(file, folder).ok());
    }
    /// Start and size entered, OK pressed.
    void save_range(const std::string& start, const std::string& size, int format = 0)
    {
        save(files.path("out"), [&](writefile& dialog) {
            dialog.wfileOption2(format).click();
            dialog.wfileText1.enter(start);
            dialog.wfileText2.enter(size);
            dialog.okcom.click();
        });
    }
    bool written() const { return std::filesystem::exists(files.path("out")); }

    temp_folder files;
    bool stayed_open = false;
};

}  // namespace tamrix::tests
