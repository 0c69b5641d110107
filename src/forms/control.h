// What all controls of a form share: a property that notifies the renderer when it changes, and the control itself.
#pragma once

#include "forms/control_visitor.h"

#include <functional>
#include <string>
#include <type_traits>
#include <utility>

namespace tamrix::forms {

class form;
class control;

/// A value of a control. Assigning a different one notifies the renderer.
template <class T>
class property {
public:
    explicit property(control& owner, T value = {}) : owner_{owner}, value_{std::move(value)} {}
    property(const property&) = delete;

    property& operator=(const property& other) { return *this = other.value_; }
    property& operator=(T value);
    operator const T&() const { return value_; }
    const T& operator()() const { return value_; }

private:
    control& owner_;
    T value_;
};

/// A control has two sides. The program's side is its properties. The person's side are the member functions that a
/// renderer or a test calls; they do nothing on a control that is disabled or hidden, as on a screen.
class control {
public:
    explicit control(form& owner);
    virtual ~control() = default;
    control(const control&) = delete;
    control& operator=(const control&) = delete;

    property<bool> enabled{*this, true};
    property<bool> visible{*this, true};
    /// What a person may do with it, UTF-8; shown while the mouse rests on it. Set before the form is shown.
    std::string tip;

    /// Calls the function for this kind of control.
    virtual void accept(control_visitor& visitor) = 0;

    form& owner() const { return owner_; }
    /// True if a person can use it.
    bool usable() const { return enabled() && visible(); }
    /// Notifies the renderer that this control has changed.
    virtual void changed();

protected:
    /// Runs a handler that may be empty.
    template <class... Args>
    static void raise(const std::function<void(Args...)>& handler, std::type_identity_t<Args>... args)
    {
        if (handler) handler(args...);
    }

private:
    form& owner_;
};

template <class T>
property<T>& property<T>::operator=(T value)
{
    if (value != value_) {
        value_ = std::move(value);
        owner_.changed();
    }
    return *this;
}

}  // namespace tamrix::forms
