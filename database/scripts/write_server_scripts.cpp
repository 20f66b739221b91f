#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tamarok_database/reference_database.h"
#include "tamarok_database/server_scripts.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/error.h"

namespace {

/// Writes the scripts into a folder.
void writeScripts(const std::filesystem::path& folder)
{
    using namespace tamarok;
    const ado::ConnectionRef master = embedded::connectInMemory();
    database::createMasterDatabase(*master);
    for (const database::ServerScript& script : database::serverScripts(master)) {
        std::ofstream file{folder / script.name, std::ios::binary};
        file << script.text;
        if (!file.flush())
            throw Error{errors::providerFailure, "Cannot write " + (folder / script.name).string() + "."};
    }
}

} // namespace

/// tamarok_server_scripts FOLDER
int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "Usage: tamarok_server_scripts FOLDER\n";
        return 2;
    }
    try {
        writeScripts(arguments[1]);
        return 0;
    } catch (const tamarok::Error& error) {
        std::cerr << "tamarok_server_scripts: " << error.description << '\n';
    } catch (const std::exception& error) {
        std::cerr << "tamarok_server_scripts: " << error.what() << '\n';
    }
    return 1;
}
