#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "tamarok/tmkvar.h"

namespace tamarok::workbench {

/// A list in the navigation, and the node of the application's navigation by which a user has rights to it.
struct ListNode {
    std::string_view type;
    std::string_view node; ///< key of Comm_Lock::NodeVisibleCheck; "" for a list that everybody sees
};

/// A group of lists, with its name in three languages.
struct ListGroup {
    const char* german;
    const char* english;
    const char* french;
    std::span<const ListNode> lists;
};

/// Returns the groups of all lists, each list once.
std::span<const ListGroup> listGroups();

/// What a user may do with a list.
struct ListRight {
    bool isVisible = true;
    bool isWritable = true;
};

/// Reads what the user of a session may do with the lists of a group, in their order.
std::vector<ListRight> rightsOf(const ListGroup& group, const TmkVar& session);

} // namespace tamarok::workbench
