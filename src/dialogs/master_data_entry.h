#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/tmkvar.h"

namespace tamarok::dialogs {

/// What the entry of master data needs of the lookup around it. Boxes are numbered from 0.
class MasterDataForm {
public:
    virtual ~MasterDataForm() = default;

    virtual bool boxShown(std::size_t box) const = 0;
    virtual std::string boxText(std::size_t box) const = 0;
    virtual void boxText(std::size_t box, std::string_view text) = 0;
    virtual void focusBox(std::size_t box) = 0;

    /// Returns whether a new row is typed, not the current one changed.
    virtual bool typesNewRow() const = 0;
    /// Returns the statement of the rows.
    virtual const std::string& select() const = 0;
    virtual ado::Recordset& recordset() = 0;
    /// Begins a new row in the recordset, without taking that for a move of the user.
    virtual void addNew() = 0;
    /// Tells that a new row has been added to the recordset.
    virtual void rowAdded() = 0;
    /// Reads the rows of the statement again.
    virtual void refresh() = 0;
    /// Moves to the first row that meets a criterion.
    virtual void find(std::string_view criterion) = 0;
};

/// Saves what the user typed into the boxes of a lookup, as a new row or in place of the current one. The table of the
/// lookup's SELECT decides how. The one message is the text 223, for duplicates, refused values and failures alike.
/// @return whether the dialog goes back to browsing
/// Errors: those of reading the rows of the recordset, and of reading the text of the message.
bool saveMasterData(const TmkVar& session, MasterDataForm& form);

} // namespace tamarok::dialogs
