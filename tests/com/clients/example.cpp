#include <windows.h>
// The example of docs/windows.md: a client in C++ over the dual interface.
#include "Tamarok_Comm.h"

int main()
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    _Comm_find* find = nullptr;
    if (FAILED(CoCreateInstance(__uuidof(Comm_find), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Comm_find),
                                reinterpret_cast<void**>(&find))))
        return 1;
    BSTR text = SysAllocString(L"FI;BU;EI");
    BSTR separator = SysAllocString(L";");
    SHORT count = 0;
    const HRESULT result = find->FindNumOfChar(&text, &separator, &count);
    SysFreeString(separator);
    SysFreeString(text);
    find->Release();
    CoUninitialize();
    return result == S_OK && count == 2 ? 0 : 1;
}
