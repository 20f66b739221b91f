#include "dog_form.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <tamarok/comm_csel.h>
#include <tamarok/comm_get.h>
#include <tamarok/comm_set.h>
#include <tamarok/grid_help.h>
#include <tamarok_qt/texts.h>

using namespace tamarok;

DogForm::DogForm(const TmkVar& session) : session_{session}
{
    setWindowTitle("Jagdhunde");
    list_.setObjectName("LstDogs");
    code_.setObjectName("txtProject");
    code_.setAccessibleName("Projekt");
    codeName_.setObjectName("lblProject");
    amount_.setObjectName("txtAmount");
    amount_.setAccessibleName("Menge");
    for (QWidget* const widget : {static_cast<QWidget*>(&list_), static_cast<QWidget*>(&code_),
                                  static_cast<QWidget*>(&codeName_), static_cast<QWidget*>(&amount_)})
        layout_.addWidget(widget);

    // The key of a header names its column.
    for (const char* column : {"COL_1", "COL_2", "COL_3"})
        dogs_->headers()->Add({}, column, column);
    connect(list_.header(), &QHeaderView::sectionClicked, this, [this](int section) {
        qt::guarded([&] {
            Comm_Set{}.OrderColumnListview(session_, *dogs_->headers()->Item(Variant{section + 1}), *dogs_, false);
        });
    });
    code_.installEventFilter(this);
    connect(&code_, &QLineEdit::editingFinished, this, [this] { checkCode(); });
    qt::filterKeys(amount_, [this](std::int16_t& key) { Comm_Get{}.OnlyNumbersKeyPress(key, *amountBox_, "##0.00"); });
    fill();
}

void DogForm::fill()
{
    qt::guarded([&] { Comm_CSel{}.FillListview(session_, "R", "BBHUNDE", *dogs_, "FROM BB_JAGDHUNDE"); });
}

void DogForm::lookUp()
{
    qt::guarded([&] {
        const std::string code =
            Grid_Help{}.GridHelp(session_, "SELECT NUMMER,LONG,SHORT FROM BB_T_PROJEKT_PLANUNG ORDER BY NUMMER",
                                 "Projekt", qt::fromQt(code_.text()), "000");
        code_.setText(qt::toQt(code));
        checkCode();
    });
}

bool DogForm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F4)
        return QWidget::eventFilter(watched, event);
    lookUp();
    return true;
}

void DogForm::checkCode()
{
    qt::guarded([&] {
        const std::string statement = "SELECT NUMMER,LONG FROM BB_T_PROJEKT_PLANUNG WHERE NUMMER = '" +
                                      qt::fromQt(code_.text()).substr(0, 10) + "'";
        Comm_CSel{}.Valid(session_, true, statement, codeBox_, codeLabel_, "LONG", {}, "");
    });
}
