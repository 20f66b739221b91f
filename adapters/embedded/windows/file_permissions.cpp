#include <aclapi.h>
#include <array>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>
#include <windows.h>

#include "native_file.h"
#include "path_text.h"
#include "tamarok_windows/system_error.h"
#include "tamarok_windows/wide_text.h"

// Owner and access list of files. A file that serves another one gets that one's access list, as it is in effect:
// without what its folder would add.

namespace tamarok::embedded {

namespace {

using windows::wide;

struct FreeLocal {
    void operator()(void* memory) const noexcept { LocalFree(memory); }
};

/// What the system tells of a file's security. The members point into the descriptor.
struct Security {
    std::unique_ptr<void, FreeLocal> descriptor;
    PSID owner = nullptr;
    PSID group = nullptr;
    PACL list = nullptr; ///< null: everybody may do everything
};

constexpr SECURITY_INFORMATION wanted =
    OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;

Security securityOf(const std::string& path, std::error_code& failed) noexcept
{
    Security security;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    const DWORD code = GetNamedSecurityInfoW(wide(path).data(), SE_FILE_OBJECT, wanted, &security.owner,
                                             &security.group, &security.list, nullptr, &descriptor);
    security.descriptor.reset(descriptor);
    failed = code == ERROR_SUCCESS ? std::error_code{} : windows::systemError(code);
    return security;
}

Security securityOf(const FileHandle& file, std::error_code& failed) noexcept
{
    Security security;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    const DWORD code = GetSecurityInfo(handleOf(file), SE_FILE_OBJECT, wanted, &security.owner, &security.group,
                                       &security.list, nullptr, &descriptor);
    security.descriptor.reset(descriptor);
    failed = code == ERROR_SUCCESS ? std::error_code{} : windows::systemError(code);
    return security;
}

/// True for the same rights of the same accounts in the same order, whether inherited or not.
bool sameEntries(PACL first, PACL second) noexcept
{
    if (first == nullptr || second == nullptr) return first == second;
    if (first->AceCount != second->AceCount) return false;
    for (DWORD index = 0; index < first->AceCount; ++index) {
        void* one = nullptr;
        void* other = nullptr;
        if (GetAce(first, index, &one) == 0 || GetAce(second, index, &other) == 0) return false;
        const auto* const oneHeader = static_cast<const ACE_HEADER*>(one);
        const auto* const otherHeader = static_cast<const ACE_HEADER*>(other);
        if (oneHeader->AceType != otherHeader->AceType || oneHeader->AceSize != otherHeader->AceSize ||
            std::memcmp(oneHeader + 1, otherHeader + 1, oneHeader->AceSize - sizeof(ACE_HEADER)) != 0)
            return false;
    }
    return true;
}

std::error_code setList(HANDLE file, PACL list) noexcept
{
    const DWORD code =
        SetSecurityInfo(file, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, nullptr,
                        nullptr, list, nullptr);
    return code == ERROR_SUCCESS ? std::error_code{} : windows::systemError(code);
}

/// The same file with other rights for this process.
FileHandle reopened(const FileHandle& file, DWORD access) noexcept
{
    return fileOf(ReOpenFile(handleOf(file), access, FILE_SHARE_READ | FILE_SHARE_WRITE, 0));
}

/// Security attributes with an access list that takes nothing over from the folder.
struct Attributes {
    explicit Attributes(PACL list) noexcept
    {
        InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
        SetSecurityDescriptorControl(&descriptor, SE_DACL_PROTECTED, SE_DACL_PROTECTED);
        native = {sizeof native, &descriptor, FALSE};
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    SECURITY_DESCRIPTOR descriptor{};
    SECURITY_ATTRIBUTES native{};
};

[[noreturn]] void failSystem()
{
    throw std::system_error{windows::lastError()};
}

/// An access list with one entry: this account may do everything, in the folder and with what is in it.
std::vector<std::byte> listOfThisAccount()
{
    HANDLE opened = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) failSystem();
    const FileHandle token = fileOf(opened);
    DWORD size = 0;
    GetTokenInformation(handleOf(token), TokenUser, nullptr, 0, &size);
    std::vector<std::byte> user(size);
    if (GetTokenInformation(handleOf(token), TokenUser, user.data(), size, &size) == 0) failSystem();
    PSID account = static_cast<TOKEN_USER*>(static_cast<void*>(user.data()))->User.Sid;
    std::vector<std::byte> bytes(sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + GetLengthSid(account));
    auto* const list = static_cast<ACL*>(static_cast<void*>(bytes.data()));
    constexpr DWORD inherited = OBJECT_INHERIT_ACE | CONTAINER_INHERIT_ACE;
    if (InitializeAcl(list, static_cast<DWORD>(bytes.size()), ACL_REVISION) == 0 ||
        AddAccessAllowedAceEx(list, ACL_REVISION, inherited, FILE_ALL_ACCESS, account) == 0)
        failSystem();
    return bytes;
}

} // namespace

/// Whoever may write the model must be able to open the file, whatever account creates it.
FileHandle createFileLike(const std::string& path, const std::string& model, std::error_code& failed) noexcept
{
    const Security security = securityOf(model, failed);
    if (failed) return FileHandle{};
    Attributes attributes{security.list};
    return openWithoutLink(
        path, {.access = GENERIC_READ | GENERIC_WRITE, .disposition = CREATE_NEW, .security = &attributes.native},
        failed);
}

std::string makePrivateFolder()
{
    std::array<unsigned char, 8> random{};
    fillRandom(random);
    std::string name = "tamarok-copy-";
    static constexpr std::string_view digits = "0123456789abcdef";
    for (const unsigned char byte : random)
        name.append({digits[byte >> 4U], digits[byte & 15U]});
    const std::string folder = textOf(std::filesystem::temp_directory_path() / name);
    std::vector<std::byte> list = listOfThisAccount();
    Attributes attributes{static_cast<ACL*>(static_cast<void*>(list.data()))};
    if (CreateDirectoryW(wide(folder).c_str(), &attributes.native) == 0) failSystem();
    return folder;
}

std::error_code giveOwner(const FileHandle& file, const std::string& model) noexcept
{
    std::error_code failed;
    const Security mine = securityOf(file, failed);
    if (failed) return failed;
    const Security given = securityOf(model, failed);
    if (failed) return failed;
    if (EqualSid(mine.owner, given.owner) != 0 && EqualSid(mine.group, given.group) != 0) return {};
    const FileHandle writable = reopened(file, WRITE_OWNER);
    if (!writable.isOpen()) return windows::lastError();
    const DWORD code =
        SetSecurityInfo(handleOf(writable), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION,
                        given.owner, given.group, nullptr, nullptr);
    return code == ERROR_SUCCESS ? std::error_code{} : windows::systemError(code);
}

std::error_code givePermissions(const FileHandle& file, const std::string& model) noexcept
{
    std::error_code failed;
    const Security given = securityOf(model, failed);
    return failed ? failed : setList(handleOf(file), given.list);
}

/// The owner of a file may always change its access list; the system refuses it to others.
void followPermissions(const FileHandle& file, const std::string& model) noexcept
{
    std::error_code failed;
    const std::optional<FileStatus> status = statusOf(file, failed);
    if (!status || status->size != 0 || status->names != 1) return;
    const Security mine = securityOf(file, failed);
    if (failed) return;
    const Security given = securityOf(model, failed);
    if (failed || sameEntries(mine.list, given.list)) return;
    if (const FileHandle writable = reopened(file, WRITE_DAC); writable.isOpen())
        static_cast<void>(setList(handleOf(writable), given.list));
}

} // namespace tamarok::embedded
