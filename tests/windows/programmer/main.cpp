// The tests of the programmer run as a host does: in a single-threaded apartment. The simulated programmer of this
// process is made as the command line says, "--model=22"; else it is a model 40.
#include <gtest/gtest.h>

#include <string>

#include <windows.h>

#include <objbase.h>

namespace {

std::string options_of_simulator(int count, char** words)
{
    std::string model = "40";
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word.starts_with("--model=")) model = word.substr(8);
    }
    return "model " + model + "; chips chips; speed 1000; transcript transcript.txt";
}

}  // namespace

int main(int count, char** words)
{
    testing::InitGoogleTest(&count, words);
    ::SetEnvironmentVariableA("TAMRIX_SIMULATOR", options_of_simulator(count, words).c_str());
    if (FAILED(::CoInitialize(nullptr))) return 2;
    const int result = RUN_ALL_TESTS();
    ::CoUninitialize();
    return result;
}
