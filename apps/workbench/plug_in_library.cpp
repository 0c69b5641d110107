#include "workbench/plug_in_library.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <dlfcn.h>

namespace tamrix::workbench {

namespace {

constexpr const char* file_name = "libtamrix.so";

std::string beside_program()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    const auto beside = program.parent_path() / file_name;
    return !error && std::filesystem::exists(beside, error) ? beside.string() : std::string{};
}

void* load(std::string path)
{
    if (path.empty()) path = beside_program();
    if (path.empty()) path = file_name;
    void* library = dlopen(path.c_str(), RTLD_NOW);
    if (library == nullptr) {
        throw std::runtime_error{std::string{"The plug-in cannot be loaded.\n\n"} + dlerror() +
                                 "\n\nIt belongs beside the program; another one is named with --plugin PATH."};
    }
    return library;
}

template <class Function>
Function function(void* library, const char* name)
{
    void* address = dlsym(library, name);
    if (address == nullptr) throw std::runtime_error{std::string{"The plug-in is of another version: "} + dlerror()};
    return reinterpret_cast<Function>(address);
}

}  // namespace

plug_in_library::plug_in_library(const std::string& path) : library_{load(path)}
{
    const auto find = [this](auto& target, const char* name) {
        target = function<std::remove_reference_t<decltype(target)>>(library_, name);
    };
    find(create, "tamrix_create");
    find(destroy, "tamrix_destroy");
    find(use_programmer, "tamrix_use_programmer");
    find(diagnostic, "tamrix_diagnostic");
    find(jedec_note, "tamrix_jedec_note");
    find(help_file, "tamrix_help_file");
    find(vector_count, "tamrix_vector_count");
    find(last_selftest, "tamrix_last_selftest");
    find(selftest_report, "tamrix_selftest_report");
    find(describe_logic_test, "tamrix_describe_logic_test");
    find(propose_logic_device, "tamrix_propose_logic_device");
    find(has_language, "tamrix_has_language");
    find(offers, "tamrix_offers");
    find(describe_format, "tamrix_describe_format");
    find(detect_format, "tamrix_detect_format");
    find(detect_pld, "tamrix_detect_pld");
    find(texts.make, "tamrix_text_new");
    find(texts.get, "tamrix_text_get");
    find(texts.free, "tamrix_text_free");
}

}  // namespace tamrix::workbench
