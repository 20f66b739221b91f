#pragma once

#include <array>
#include <string_view>

/// The identifiers under which the component is registered. Clients are compiled against them, so that they never
/// change.
namespace tamarok::com {

struct Identifiers {
    std::string_view className;
    std::string_view classId;
    std::string_view interfaceId; ///< of the dual interface, whose name is that of the class with a leading "_"
};

inline constexpr std::string_view libraryId = "5A677C17-CCD6-49DA-AEDB-F682D495DF40";
inline constexpr std::string_view recordId = "7237DB01-414D-48F8-9506-14E2444B7DF8"; ///< of the record TmkVar

/// In the order of the class map.
inline constexpr std::array classIdentifiers{
    Identifiers{"Comm_find", "B5625962-FF35-46F3-A75F-F0605F50CDAB", "2A970883-049F-42B0-A8CA-D64008E3D333"},
    Identifiers{"GridHelp", "C98CBA58-8456-4638-B168-B22A2D26033B", "700E5D08-4056-41F3-AD31-A189E9E5254C"},
    Identifiers{"C_Version", "CB085DC2-B520-4660-A04A-778AE0CD38BD", "A2A7DDA2-9B9A-4587-B77D-FD1A16F6D959"},
    Identifiers{"Comm_Forms", "9BB3F113-C49A-4529-ABE9-09BA5E5E272E", "EB5A905A-4097-4C7A-B6DE-CDA2892506CC"},
    Identifiers{"Comm_Act", "69A759ED-02B5-474E-8455-1A97C51B37B8", "AE15FD1E-F2ED-4B3A-A124-41DCDA9920F8"},
    Identifiers{"Comm_CSel", "2052C446-74CB-4EE5-A16D-9A92081B06B4", "2B10F431-9E56-432C-A025-8AB47A369228"},
    Identifiers{"Comm_Conv", "625E5ED0-3EF8-479E-A639-BF5FE8AE9221", "BB87CF15-A9F8-404C-9A8F-31369205D84F"},
    Identifiers{"Comm_Lock", "4C39CAB5-920B-4E50-AFAE-F2BF761EBC04", "0B1E04EE-E22F-47F6-BF5D-CD4257318BA9"},
    Identifiers{"Comm_SQL", "3400E871-5241-4F79-8FFE-153329A62D31", "8DA389ED-0DB1-4B91-8B96-300D8845508A"},
    Identifiers{"Comm_Models", "4FDF54C1-3A77-4BA5-8835-4215B3FA5748", "CFC93D7F-7F39-40AC-94D3-9798C2BD9818"},
    Identifiers{"Comm_Get", "BD6F1924-BD50-45C6-9E0E-408471E0A61C", "AA2C5522-B3AD-40CB-96E8-24C25785C80C"},
    Identifiers{"Comm_Set", "92CC6C57-6B84-4E3E-9840-11835BA85F41", "53EE102C-7D9A-4FB0-AB66-E3EE64930EEB"},
};

} // namespace tamarok::com
