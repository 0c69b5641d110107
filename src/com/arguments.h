// The arguments of a late-bound call in the types that the method declares.
#pragma once

#include <vector>

#include <windows.h>

#include <oaidl.h>

namespace tamrix::com {

/// Copies of the caller's arguments, each behind a reference of the declared type. Scripts pass variables as references
/// to variants and numbers in widths of their own, which no typed parameter takes. What the method changed goes back.
class arguments {
public:
    arguments() = default;
    ~arguments();
    arguments(const arguments&) = delete;
    arguments& operator=(const arguments&) = delete;

    /// S_OK, or what the call fails with; `bad_argument`, if not null, then tells the place of a bad argument. May
    /// throw std::bad_alloc.
    HRESULT take(ITypeInfo* info, DISPID method, const DISPPARAMS& given, UINT* bad_argument);
    /// What the type library's own dispatcher takes. Valid as long as this object.
    DISPPARAMS* parameters() { return &parameters_; }
    /// Writes numbers that the method changed to the caller's variables, in their own types. `given` is what was taken.
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
