// Keeps an error that a form's handler throws inside a callback of the toolkit, which cannot pass errors on.
#pragma once

#include <exception>
#include <functional>
#include <utility>

namespace tamrix::wxui {

class callback_guard {
public:
    /// `on_error` ends the dialog.
    explicit callback_guard(std::function<void()> on_error) : on_error_{std::move(on_error)} {}

    template <class Body>
    void operator()(Body body) noexcept
    {
        try {
            body();
        } catch (...) {
            // The first error counts; later ones result from it.
            if (!kept_) kept_ = std::current_exception();
            on_error_();
        }
    }

    void rethrow()
    {
        if (kept_) std::rethrow_exception(std::exchange(kept_, nullptr));
    }

private:
    std::function<void()> on_error_;
    std::exception_ptr kept_;
};

}  // namespace tamrix::wxui
