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
    layout_.addWidget(&list_);
    layout_.addLayout(&fields_);
    fields_.addRow("&Projekt (F4)", &code_);
    fields_.addRow("", &codeName_);
    fields_.addRow("&Menge (fm)", &amount_);
    amount_.setAlignment(Qt::AlignRight);

    // The key of a header names its column; widths are twips.
    struct Column {
        const char* key;
        const char* text;
        float width;
    };
    for (const Column& column :
         {Column{"COL_1", "Nummer", 1500}, Column{"COL_2", "Zuchtname", 4200}, Column{"COL_3", "Rufname", 1800}})
        dogs_->headers()->Add({}, column.key, column.text)->Width = column.width;
    list_.setAlternatingRowColors(true);
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
