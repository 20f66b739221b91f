#include <algorithm>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "writers.h"

// tamarok_com_writer FOLDER: writes Tamarok_Comm.idl and typed_methods.cpp into the folder.

namespace {

using namespace tamarok;

/// The classes of the interface, each with its identifiers.
std::vector<com::OfferedRow> offeredRows()
{
    std::vector<com::OfferedRow> rows;
    const auto all = component::classes();
    for (const com::Identifiers& identifiers : com::classIdentifiers) {
        const component::ClassInfo& info = component::requireClass(identifiers.className);
        // The table of identifiers and the tables of the interface follow the class map's order.
        if (&info != &all[rows.size()]) throw std::runtime_error{std::string{info.name} + " is out of order"};
        std::int16_t slot = 0;
        for (const component::OperationInfo& operation : info.operations)
            if (operation.slot != ++slot)
                throw std::runtime_error{std::string{info.name} + " has no operation in slot " + std::to_string(slot)};
        rows.push_back({info, identifiers});
    }
    return rows;
}

template <class Write>
void writeFile(const std::string& path, const Write& write, std::span<const com::OfferedRow> rows)
{
    std::ofstream out{path, std::ios::binary};
    write(out, rows);
    out.close();
    if (!out) throw std::runtime_error{"cannot write " + path};
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "usage: tamarok_com_writer FOLDER\n";
        return 2;
    }
    try {
        const std::string folder = arguments[1];
        const auto rows = offeredRows();
        writeFile(folder + "/Tamarok_Comm.idl", com::writeDescription, rows);
        writeFile(folder + "/typed_methods.cpp", com::writeTypedMethods, rows);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "tamarok_com_writer: " << failure.what() << '\n';
        return 1;
    }
}
