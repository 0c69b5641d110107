#include "com/arguments.h"

#include <oleauto.h>

namespace tamrix::com {

namespace {

/// A method's description, given back at the end.
class description {
public:
    description(ITypeInfo* info, DISPID method) : info_{info}
    {
        for (UINT i = 0; SUCCEEDED(info_->GetFuncDesc(i, &function_)); ++i) {
            if (function_->memid == method) return;
            info_->ReleaseFuncDesc(function_);
            function_ = nullptr;
        }
        function_ = nullptr;
    }
    ~description()
    {
        if (function_ != nullptr) info_->ReleaseFuncDesc(function_);
    }
    description(const description&) = delete;
    description& operator=(const description&) = delete;

    explicit operator bool() const { return function_ != nullptr; }
    UINT count() const { return static_cast<UINT>(function_->cParams); }
    /// The type to which a parameter, a reference, refers.
    VARTYPE type(UINT index) const
    {
        const TYPEDESC& declared = function_->lprgelemdescParam[index].tdesc;
        return declared.vt == VT_PTR ? declared.lptdesc->vt : declared.vt;
    }

private:
    ITypeInfo* info_;
    FUNCDESC* function_ = nullptr;
};

/// Puts a number into a variable of the caller, if it has room for it.
void store(const VARIANT& number, const VARIANTARG& variable)
{
    const bool of_any_type = variable.vt == (VT_BYREF | VT_VARIANT);
    const auto type =
        static_cast<VARTYPE>(of_any_type ? variable.pvarVal->vt : static_cast<VARTYPE>(variable.vt & ~VT_BYREF));
    VARIANT converted;
    ::VariantInit(&converted);
    if (FAILED(::VariantChangeType(&converted, const_cast<VARIANT*>(&number), 0, type))) return;
    switch (type) {
    case VT_I1:
    case VT_UI1: (of_any_type ? variable.pvarVal->bVal : *variable.pbVal) = converted.bVal; break;
    case VT_BOOL:
    case VT_UI2:
    case VT_I2: (of_any_type ? variable.pvarVal->iVal : *variable.piVal) = converted.iVal; break;
    case VT_INT:
    case VT_UINT:
    case VT_UI4:
    case VT_I4: (of_any_type ? variable.pvarVal->lVal : *variable.plVal) = converted.lVal; break;
    case VT_R8: (of_any_type ? variable.pvarVal->dblVal : *variable.pdblVal) = converted.dblVal; break;
    default: ::VariantClear(&converted);
    }
}

}  // namespace

arguments::~arguments()
{
    for (VARIANT& one : values_) ::VariantClear(&one);
}

HRESULT arguments::take_one(UINT place, const VARIANTARG& given, VARTYPE type)
{
    if ((given.vt & VT_BYREF) != 0 && given.byref == nullptr) return E_POINTER;
    VARIANT& value = values_[place];
    HRESULT failed = ::VariantCopyInd(&value, const_cast<VARIANTARG*>(&given));  // only reads it
    if (SUCCEEDED(failed)) failed = ::VariantChangeType(&value, &value, 0, type);
    if (FAILED(failed)) return failed;
    VARIANTARG& reference = references_[place];
    reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
    reference.byref = &value.byref;  // all members of a variant's value begin at one address
    before_[place] = value.llVal;
    return S_OK;
}

HRESULT arguments::take(ITypeInfo* info, DISPID method, const DISPPARAMS& given, UINT* bad_argument)
{
    const description declared{info, method};
    if (!declared) return DISP_E_MEMBERNOTFOUND;
    if (given.cArgs != declared.count() || given.cNamedArgs > given.cArgs) return DISP_E_BADPARAMCOUNT;
    if (given.cArgs != 0 && given.rgvarg == nullptr) return E_INVALIDARG;
    if (given.cNamedArgs != 0 && given.rgdispidNamedArgs == nullptr) return E_INVALIDARG;
    values_.resize(given.cArgs);
    references_.resize(given.cArgs);
    before_.resize(given.cArgs);
    for (VARIANT& one : values_) ::VariantInit(&one);
    if (given.cNamedArgs != 0) named_.assign(given.rgdispidNamedArgs, given.rgdispidNamedArgs + given.cNamedArgs);
    std::vector<bool> met(given.cArgs);
    for (UINT place = 0; place < given.cArgs; ++place) {
        // The named arguments come first, then the others from the last to the first.
        const auto index = place < given.cNamedArgs ? static_cast<UINT>(named_[place]) : given.cArgs - 1 - place;
        if (index >= declared.count()) return DISP_E_PARAMNOTFOUND;
        if (met[index]) return DISP_E_PARAMNOTOPTIONAL;  // given twice, so that another one lacks
        met[index] = true;
        if (const HRESULT failed = take_one(place, given.rgvarg[place], declared.type(index)); FAILED(failed)) {
            if (bad_argument != nullptr) *bad_argument = place;
            return failed;
        }
    }
    parameters_ = {references_.data(), named_.data(), given.cArgs, given.cNamedArgs};
    return S_OK;
}

void arguments::give_back(const DISPPARAMS& given) const
{
    for (UINT place = 0; place < given.cArgs; ++place) {
        const bool changed = values_[place].llVal != before_[place] && values_[place].vt != VT_BSTR;
        if (changed && (given.rgvarg[place].vt & VT_BYREF) != 0) store(values_[place], given.rgvarg[place]);
    }
}

}  // namespace tamrix::com
