// Must not compile: the row names one operation and points to another.
#include "binder.h"

#include "tamarok/comm_find.h"

constexpr tamarok::component::OperationInfo row =
    tamarok::component::operation<&tamarok::Comm_find::FindSubstring>(1, "FindNumOfChar", "&a, &b, &c", ".");
