#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/platforms.h"
#include "support/scratch_folder.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/backend.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_loc/loc_service.h"
#include "tamarok_qt/platform.h"

#include "tamarok/backend_registry.h"
#include "tamarok/tmkvar.h"

namespace tamarok::qt::acting {

/// A message box that keeps the messages and answers OK.
class KeptMessages final : public MessageBox {
public:
    std::int16_t show(std::string_view text, std::int32_t, std::string_view) override
    {
        shown.emplace_back(text);
        return 1;
    }
    std::vector<std::string> shown;
};

/// The sample database, made once for a test program.
class SampleFile {
public:
    static const std::filesystem::path& path()
    {
        static const SampleFile sample;
        return sample.path_;
    }

private:
    SampleFile()
    {
        embedded::NewDatabase building{path_};
        database::createReferenceDatabase(*building.connection(), {.logs = 0, .records = 20});
        building.connection()->Execute("CREATE TABLE MANY (CODE NVARCHAR(20) NOT NULL PRIMARY KEY, AMOUNT FLOAT, NAME "
                                       "NVARCHAR(40), ID_ACCESS_LEVELS INT)");
        building.complete();
    }
    tamarok::test::ScratchFolder folder_;
    std::filesystem::path path_ = folder_.path() / "sample.db";
};

/// A session on the sample database under the Qt services.
class Sample {
public:
    explicit Sample(std::string_view language = "GERMAN", MapMaker makeMap = {}) : scope_{platform(std::move(makeMap))}
    {
        embedded::registerBackend(backends_);
        session.strConnection = "Provider=Tamarok.Embedded;Data Source=" + SampleFile::path().string();
        session.db_ADO = backends_.open(session.strConnection);
        session.strLanguage = language;
        session.strDateFormat = "YYYY-MM-DD";
        session.ID_User = 1;
        session.ID_Access_Levels = 5;
    }

    TmkVar session;
    std::shared_ptr<KeptMessages> messages = std::make_shared<KeptMessages>();

private:
    Platform platform(MapMaker makeMap)
    {
        Platform made = tamarok::test::platformOf("de-AT");
        equip(made, std::move(makeMap));
        made.messageBox = messages;
        made.makeLocService = [] { return loc::makeLocService(); };
        made.makeConnection = [this](std::string_view text) { return backends_.open(text); };
        return made;
    }

    ado::BackendRegistry backends_;
    PlatformScope scope_;
};

} // namespace tamarok::qt::acting
