// Must not compile: the operation can change its parameter, and the row does not declare it by reference.
#include "binder.h"

struct Changer {
    void change(std::string& text) const { text += "!"; }
};

constexpr tamarok::component::OperationInfo row =
    tamarok::component::operation<&Changer::change>(1, "change", "text", ".");
