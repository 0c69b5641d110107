// The arguments of a late-bound call, converted to the types that the method declares.
#pragma once

#include <vector>

#include <windows.h>

#include <oaidl.h>

namespace tamrix::com {

/// Copies of the caller's arguments, each referenced with the declared type. Scripts pass variables as references to
/// variants, and numbers in other widths, which no typed parameter accepts. Changes by the method are copied back.
class arguments {
public:
    arguments() = default;
    ~arguments();
    arguments(const arguments&) = delete;
    arguments& operator=(const arguments&) = delete;

    /// S_OK, or the error of the call; `bad_argument`, if not null, then gets the position of the bad argument. May
    /// throw std::bad_alloc.
    HRESULT take(ITypeInfo* info, DISPID method, const DISPPARAMS& given, UINT* bad_argument);
    /// The arguments for the type library's own dispatcher. Valid as long as this object.
    DISPPARAMS* parameters() { return &parameters_; }
    /// Writes numbers that the method changed to the caller's variables, in their own types. `given` are the original
    /// arguments.
    void give_back(const DISPPARAMS& given) const;

private:
    HRESULT take_one(UINT place, const VARIANTARG& given, VARTYPE type);

    std::vector<VARIANT> values_;
    std::vector<LONGLONG> before_;  // the same, as they came
    std::vector<VARIANTARG> references_;
    std::vector<DISPID> named_;
    DISPPARAMS parameters_{};
};

}  // namespace tamrix::com
