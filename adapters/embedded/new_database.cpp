#include "tamarok_embedded/new_database.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "connection_text.h"
#include "draft_file.h"
#include "engine.h"
#include "exclusive_hold.h"
#include "failures.h"
#include "file_checks.h"
#include "opening.h"
#include "path_text.h"
#include "system_files.h"

namespace tamarok::embedded {

namespace {

/// Endings of the files that stand beside a database while it is open, and hold nothing when it is not.
constexpr std::array<std::string_view, 4> sideEndings{"-wal", "-shm", "-journal", "-locks"};

bool isEmpty(const std::string& file)
{
    const std::optional<FileStatus> entry = entryOf(file);
    return entry && entry->kind == FileKind::Regular && entry->size == 0;
}

/// Connects the single writer of a draft.
ado::ConnectionRef connectDraft(const DatabasePath& draft)
{
    writeEmptyDatabase(draft);
    OpenOptions options;
    options.mode = OpenMode::Build;
    return openConnection(draft, options, composeConnectionText(draft.shown, options));
}

} // namespace

/// The draft is declared before the connection, which must be closed first: closing another descriptor of the file
/// would drop the connection's locks.
class NewDatabase::Work {
public:
    Work(const std::filesystem::path& file, Existing existing) : target_{resolvePath(textOf(file))}, existing_{existing}
    {
        checkTarget();
        const bool replaces = targetExists();
        if (replaces) {
            const ExclusiveHold probe{target_};
        }
        draft_.emplace(target_);
        if (replaces) {
            draft_->takeOwnerAndPermissions();
        }
        connection_ = connectDraft(draft_->path());
    }

    const ado::ConnectionRef& connection() const noexcept { return connection_; }

    /// Both files are held during the renaming and until the files beside the old one are gone: nobody comes in
    /// between who could use them. A file that appears meanwhile is looked at again. A system that refuses to rename
    /// open files keeps others out itself; there the holds end before the renaming.
    void complete()
    {
        connection_->Close();
        draft_->finish();
        std::optional<ExclusiveHold> held;
        if (openFilesCanLoseNames()) {
            held.emplace(draft_->path());
        }
        constexpr int attempts = 10;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            if (tryPublish()) {
                return;
            }
        }
        throw createFailure(target_.shown, "it is replaced again and again");
    }

private:
    /// What the target must not be. Without an old file a log beside it stands alone.
    void checkTarget() const
    {
        std::error_code failed;
        const std::optional<FileStatus> status = statusOf(target_.real, failed);
        if (!status) {
            if (failed != std::errc::no_such_file_or_directory) {
                throw createFailure(target_.shown, failed.message());
            }
            checkNoLogBeside(target_);
            return;
        }
        if (status->kind == FileKind::Directory) {
            throw createFailure(target_.shown, "it is a directory");
        }
        if (existing_ == Existing::Refuse) {
            refuseExisting();
        }
        checkReplaceable(target_);
    }

    bool targetExists() const
    {
        std::error_code failed;
        return statusOf(target_.real, failed).has_value();
    }

    [[noreturn]] void refuseExisting() const
    {
        Error error = createFailure(target_.shown, "the file exists already");
        error.number = errors::fileExists;
        throw error;
    }

    /// False if a file has appeared or gone between the look and the renaming.
    bool tryPublish()
    {
        checkTarget();
        std::optional<ExclusiveHold> old;
        const bool replaces = targetExists();
        if (replaces) {
            old.emplace(target_);
        }
        if (!openFilesCanLoseNames()) {
            old.reset();
            checkNoLogBeside(target_);
        }
        const std::error_code failed =
            draft_->publish(replaces ? DraftFile::Existing::Replace : DraftFile::Existing::Refuse);
        if (failed == std::errc::file_exists && !replaces) {
            return false;
        }
        if (failed) {
            throw createFailure(target_.shown, failed.message());
        }
        if (replaces) {
            removeSideFiles();
        }
        return true;
    }

    /// The shared memory of a log is made anew by the next connection; the other files are empty unless they are
    /// foreign.
    void removeSideFiles() const
    {
        for (const std::string_view ending : sideEndings) {
            const std::string file = target_.real + std::string{ending};
            if (ending == "-shm" || isEmpty(file)) {
                removeFile(file);
            }
        }
    }

    DatabasePath target_;
    Existing existing_;
    std::optional<DraftFile> draft_;
    ado::ConnectionRef connection_;
};

NewDatabase::NewDatabase(const std::filesystem::path& file, Existing existing) :
    work_{std::make_unique<Work>(file, existing)}
{}

NewDatabase::~NewDatabase() = default;

const ado::ConnectionRef& NewDatabase::connection() const noexcept
{
    return work_->connection();
}

void NewDatabase::complete()
{
    work_->complete();
}

} // namespace tamarok::embedded
