// A program that knows of shared objects nothing but their names: it plays a host that is not made with our
// headers. It reads orders from its standard input, a line each, and answers each with a line.
//
//     create NAME BYTES           makes an object
//     write NAME OFFSET HEX...    writes bytes
//     read NAME OFFSET COUNT      answers with bytes in hexadecimal
//     size NAME                   answers with the length in bytes
//     remove NAME                 removes the name
#include <cstddef>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// An object mapped while an order is carried out.
class mapped_object {
public:
    explicit mapped_object(const std::string& name) : file_{::shm_open(("/" + name).c_str(), O_RDWR, 0)}
    {
        struct stat info {};
        if (file_ < 0 || ::fstat(file_, &info) != 0) return;
        length_ = static_cast<std::size_t>(info.st_size);
        void* address = ::mmap(nullptr, length_, PROT_READ | PROT_WRITE, MAP_SHARED, file_, 0);
        if (address != MAP_FAILED) bytes_ = static_cast<unsigned char*>(address);
    }
    ~mapped_object()
    {
        if (bytes_ != nullptr) ::munmap(bytes_, length_);
        if (file_ >= 0) ::close(file_);
    }
    mapped_object(const mapped_object&) = delete;
    mapped_object& operator=(const mapped_object&) = delete;

    std::size_t length() const { return bytes_ == nullptr ? 0 : length_; }
    unsigned char* bytes() const { return bytes_; }

private:
    int file_;
    std::size_t length_ = 0;
    unsigned char* bytes_ = nullptr;
};

std::string create(const std::string& name, std::istream& order)
{
    long length = 0;
    order >> length;
    const int file = ::shm_open(("/" + name).c_str(), O_RDWR | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    const bool made = file >= 0 && ::ftruncate(file, length) == 0;
    if (file >= 0) ::close(file);
    return made ? "ok" : "failed";
}

std::string write(const std::string& name, std::istream& order)
{
    std::size_t offset = 0;
    order >> offset >> std::hex;
    const mapped_object object{name};
    for (unsigned byte = 0; order >> byte; ++offset) {
        if (offset >= object.length()) return "failed";
        object.bytes()[offset] = static_cast<unsigned char>(byte);
    }
    return "ok";
}

std::string read(const std::string& name, std::istream& order)
{
    std::size_t offset = 0, count = 0;
    order >> offset >> count;
    const mapped_object object{name};
    if (offset + count > object.length()) return "failed";
    std::string answer;
    for (; count > 0; --count, ++offset) {
        char text[4];
        std::snprintf(text, sizeof text, "%s%02x", answer.empty() ? "" : " ", unsigned{object.bytes()[offset]});
        answer += text;
    }
    return answer;
}

std::string obey(const std::string& line)
{
    std::istringstream order{line};
    std::string what, name;
    order >> what >> name;
    if (what == "create") return create(name, order);
    if (what == "write") return write(name, order);
    if (what == "read") return read(name, order);
    if (what == "size") return std::to_string(mapped_object{name}.length());
    if (what == "remove") return ::shm_unlink(("/" + name).c_str()) == 0 ? "ok" : "failed";
    return "unknown order";
}

}  // namespace

// With the parameters that main has everywhere: the objects of all programs are compared with each other.
int main(int /*count*/, char** /*words*/)
{
    for (std::string line; std::getline(std::cin, line);) std::cout << obey(line) << std::endl;
}
