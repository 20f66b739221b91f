#include "windows/list_worker.h"

#include <QMetaObject>

#include "list/visible_services.h"

#include "tamarok/platform.h"

namespace tamarok::workbench {

namespace {

Worker::Open openerOf(const Workplace& place, const std::string& type)
{
    return [open = place.opener(), type, session = place.sessionOver({})] {
        ado::ConnectionRef connection = open();
        TmkVar own = session;
        own.db_ADO = connection;
        cli::prepareList(type, own);
        return connection;
    };
}

Platform platformOfWorker()
{
    Platform platform;
    platform.regional = Platform::current().regional;
    platform.makeLocService = Platform::current().makeLocService;
    return platform;
}

} // namespace

std::unique_ptr<Worker> makeListWorker(const Workplace& place, const std::string& type, QObject& window)
{
    return std::make_unique<Worker>(
        openerOf(place, type), platformOfWorker(),
        [&window](std::function<void()> action) {
            QMetaObject::invokeMethod(&window, std::move(action), Qt::QueuedConnection);
        },
        place.yard());
}

} // namespace tamarok::workbench
