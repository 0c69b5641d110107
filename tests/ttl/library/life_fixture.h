// A library in memory: thousands of saves that reach a disk take their time.
#pragma once

#include "ttl/ttl_fixture.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace tamrix::tests {

struct life_fixture : ttl_fixture {
    life_fixture()
    {
        std::filesystem::create_directories(folder + "lib");
        session.syspath = folder;
    }
    ~life_fixture() { std::filesystem::remove_all(folder); }
    void put_library(const std::string& text) const { std::ofstream{file, std::ios::binary} << text; }

    std::string folder = "/dev/shm/" + fresh_name_space() + "/";
    std::string file = folder + "lib/test.lib";
};

}  // namespace tamrix::tests
