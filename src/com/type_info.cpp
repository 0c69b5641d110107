#include "com/type_info.h"

#include "com/interface.h"
#include "com/server/stay.h"

#include <oleauto.h>

namespace tamrix::com {

HRESULT load_type_info(ITypeInfo** info)
{
    *info = nullptr;
    ITypeLib* library = nullptr;
    if (const HRESULT failed = ::LoadTypeLibEx(module_path().c_str(), REGKIND_NONE, &library); FAILED(failed))
        return failed;
    const HRESULT result = library->GetTypeInfoOfGuid(interface_id, info);
    library->Release();
    return result;
}

}  // namespace tamrix::com
