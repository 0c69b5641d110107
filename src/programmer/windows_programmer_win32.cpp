#include "programmer/windows_programmer_win32.h"

#include "base/environment_win32.h"
#include "base/utf16.h"
#include "programmer/device_object_win32.h"
#include "programmer/lumbat_dll_win32.h"

#include <memory>
#include <optional>
#include <utility>

namespace tamrix::hw {

namespace {

/// What stays when a programmer is let go.
class halves {
public:
    explicit halves(windows_names names) : names_{std::move(names)} {}

    lumbat& transport()
    {
        if (!transport_) {
            const std::string& named = names_.transport_library;
            transport_.emplace(named.empty() ? TAMRIX_LUMBAT_FILE : named);
        }
        return *transport_;
    }
    devobj& device()
    {
        if (!device_) device_.emplace(device_class());
        return *device_;
    }

private:
    std::string device_class() const
    {
        if (!names_.device_class.empty()) return names_.device_class;
        const std::string told = environment_text(TAMRIX_DEVOBJ_VARIABLE);
        return told.empty() ? utf16::to_utf8(std::wstring_view{TAMRIX_DEVOBJ_PROG_ID}) : told;
    }

    windows_names names_;
    std::optional<lumbat_dll> transport_;
    std::optional<device_object> device_;
};

class windows_programmer final : public programmer {
public:
    explicit windows_programmer(std::shared_ptr<halves> both) : both_{std::move(both)} {}
    lumbat& transport() override { return both_->transport(); }
    devobj& device() override { return both_->device(); }

private:
    std::shared_ptr<halves> both_;
};

}  // namespace

programmer_source windows_source(windows_names names)
{
    return [both = std::make_shared<halves>(std::move(names))](const reply_memory&) {
        return std::make_unique<windows_programmer>(both);
    };
}

}  // namespace tamrix::hw
