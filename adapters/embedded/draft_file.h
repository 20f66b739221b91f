#pragma once

#include <string>
#include <system_error>

#include "database_path.h"
#include "file_handle.h"

namespace tamarok::embedded {

/// A file that is written under a name of its own beside its target and takes the target's name when it is complete.
/// It is created exclusively, never through a link, and carries a lock until then, so that the drafts that killed
/// processes left behind can be told from those in work, even of another process namespace.
class DraftFile {
public:
    /// Creates an empty draft. Removes abandoned ones of the same target before.
    /// Error 0x80004005 if the folder cannot be written.
    explicit DraftFile(DatabasePath target);
    DraftFile(const DraftFile&) = delete;
    DraftFile& operator=(const DraftFile&) = delete;
    ~DraftFile(); ///< removes the draft unless it was published

    /// The draft's path, with the target's for messages.
    DatabasePath path() const { return {target_.shown, name_}; }

    /// Gives the draft the owner, group and permissions of its target. Error 0x80004005 where that is not permitted.
    void takeOwnerAndPermissions() const;

    /// Waits until the draft is on the disk, and gives up its lock. No SQLite connection of this process may have the
    /// file open, since closing it here would drop their locks.
    void finish();

    /// Whether a publication replaces an existing file.
    enum class Existing { Refuse, Replace };
    /// Renames the draft to its target. @return no error, or the system's
    std::error_code publish(Existing existing);

private:
    void create();
    bool tryName();
    [[noreturn]] void fail(std::error_code code) const;

    DatabasePath target_;
    std::string name_;
    FileHandle file_;
    bool published_ = false;
};

} // namespace tamarok::embedded
