#include "base/wide_path_win32.h"
#include "files/file_io.h"
#include "files/replace_file.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <windows.h>

namespace tamrix {

namespace {

/// Separates the name of the file from the numbers that make one save unlike another: its process and a time.
constexpr std::string_view mark_of_a_save = ".saving-";

std::string name_beside(const std::string& target)
{
    return target + std::string{mark_of_a_save} + std::to_string(::GetCurrentProcessId()) + "-" +
           std::to_string(::GetTickCount());
}

/// The process that a save's numbers tell; none where they are something else.
std::optional<DWORD> process_of_save(std::wstring_view numbers)
{
    constexpr std::wstring_view digits = L"0123456789";
    constexpr std::size_t longest = 10;
    const std::size_t dash = numbers.find_first_not_of(digits);
    if (dash == std::wstring_view::npos || numbers[dash] != L'-' || dash == 0 || dash > longest) return std::nullopt;
    const std::wstring_view time = numbers.substr(dash + 1);
    if (time.empty() || time.size() > longest || time.find_first_not_of(digits) != std::wstring_view::npos)
        return std::nullopt;
    return static_cast<DWORD>(std::stoull(std::wstring{numbers.substr(0, dash)}));
}

bool has_ended(DWORD process)
{
    const HANDLE running = ::OpenProcess(SYNCHRONIZE, FALSE, process);
    if (running == nullptr) return ::GetLastError() == ERROR_INVALID_PARAMETER;
    const bool ended = ::WaitForSingleObject(running, 0) == WAIT_OBJECT_0;
    ::CloseHandle(running);
    return ended;
}

/// A save that was killed could not take its file away. What somebody has open stays.
void remove_leftovers(const std::string& target)
{
    const std::filesystem::path whole{wide_path(target)};
    const std::wstring begin = whole.filename().wstring() + std::wstring{mark_of_a_save.begin(), mark_of_a_save.end()};
    const std::filesystem::path folder = whole.parent_path();
    std::error_code none;
    std::filesystem::directory_iterator entry{folder.empty() ? L"." : folder, none};
    for (; !none && entry != std::filesystem::directory_iterator{}; entry.increment(none)) {
        const std::wstring name = entry->path().filename().wstring();
        if (!name.starts_with(begin)) continue;
        const auto process = process_of_save(std::wstring_view{name}.substr(begin.size()));
        if (process && has_ended(*process)) ::DeleteFileW(entry->path().c_str());
    }
}

bool may_be_written(const std::string& target)
{
    // An administrator may open even what is marked as read-only.
    const DWORD attributes = ::GetFileAttributesW(wide_path(target).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return true;  // nothing is there: it is made
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return false;
    const HANDLE file = ::CreateFileW(wide_path(target).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    ::CloseHandle(file);
    return true;
}

/// False where the new file cannot take the name. The replacement keeps what belongs to the old name: its owner, its
/// rights, its attributes.
bool take_name(const std::wstring& fresh, const std::wstring& target)
{
    if (::GetFileAttributesW(target.c_str()) == INVALID_FILE_ATTRIBUTES)
        return ::MoveFileExW(fresh.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    return ::ReplaceFileW(target.c_str(), fresh.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) !=
           0;
}

/// A new file beside the old one, removed again unless it took the name of the file.
class file_beside {
public:
    /// Throws file_error where the folder does not take it.
    explicit file_beside(const std::string& target) : name_{name_beside(target)}, file_{name_} {}
    ~file_beside()
    {
        try {
            if (!closed_) file_.close();
        } catch (const file_error&) {
        }
        ::DeleteFileW(wide_path(name_).c_str());
    }
    file_beside(const file_beside&) = delete;
    file_beside& operator=(const file_beside&) = delete;

    void write(std::span<const std::uint8_t> bytes) { file_.write(bytes); }
    bool take_name_of(const std::string& target)
    {
        closed_ = true;
        file_.close();
        return take_name(wide_path(name_), wide_path(target));
    }
    const std::string& name() const { return name_; }

private:
    std::string name_;
    output_file file_;
    bool closed_ = false;
};

}  // namespace

class file_replacement::work {
public:
    explicit work(const std::string& path) : path_{path}
    {
        // Whoever may not write the file may not replace it either.
        if (!may_be_written(path)) throw file_error{{.file = path, .found = "permission denied"}};
        remove_leftovers(path);
        try {
            fresh_.emplace(path);
        } catch (const file_error&) {
            // The folder takes no new file; the old one may still be written.
            if (::GetFileAttributesW(wide_path(path).c_str()) == INVALID_FILE_ATTRIBUTES) output_file{path}.close();
        }
    }

    void write(std::span<const std::uint8_t> bytes)
    {
        if (fresh_) {
            fresh_->write(bytes);
        } else {
            waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
        }
    }

    /// The system takes the name only with the content, so that both cases are one.
    void take_place()
    {
        if (!fresh_) return write_over(waiting_);
        if (!fresh_->take_name_of(path_)) write_over(file_image{fresh_->name()}.bytes());
    }

private:
    void write_over(std::span<const std::uint8_t> content) const
    {
        output_file file{path_};
        file.write(content);
        file.close();
    }

    std::string path_;
    std::optional<file_beside> fresh_;
    std::vector<std::uint8_t> waiting_;
};

file_replacement::file_replacement(const std::string& path) : work_{std::make_unique<work>(path)} {}

file_replacement::~file_replacement() = default;

void file_replacement::write(std::span<const std::uint8_t> bytes) { work_->write(bytes); }

void file_replacement::take_place(lasts) { work_->take_place(); }

void replace_file(const std::string& path, std::string_view content)
{
    file_replacement file{path};
    file.write({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
    file.take_place(file_replacement::lasts::power_cut);
}

}  // namespace tamrix
