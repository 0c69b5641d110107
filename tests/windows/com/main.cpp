// The tests of the COM server run as a host does: in a single-threaded apartment.
#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

int main(int count, char** words)
{
    testing::InitGoogleTest(&count, words);
    if (FAILED(::CoInitialize(nullptr))) return 2;
    const int result = RUN_ALL_TESTS();
    ::CoUninitialize();
    return result;
}
