// The arguments of a late-bound call in the types that the method declares.
#pragma once

#include <vector>

#include <windows.h>

#include <oaidl.h>

namespace tamrix::com {

/// Copies of the caller's arguments, each behind a reference of the declared type. Scripts pass variables as references
/// to variants and numbers in widths of their own, which no typed parameter takes; and since the methods leave their
/// arguments as they are, nothing has to go back.
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

private:
    HRESULT take_one(UINT place, const VARIANTARG& given, VARTYPE type);

    std::vector<VARIANT> values_;
    std::vector<VARIANTARG> references_;
    std::vector<DISPID> named_;
    DISPPARAMS parameters_{};
};

}  // namespace tamrix::com
