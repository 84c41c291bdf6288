#include "editors/gui/frmCult1.h"

#include "editors/CultivarTexts.h"
#include "editors/EditorTexts.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>

namespace quillon {

namespace ct = editors::cultivar_text;

namespace {

QListWidget* list(const char* name, QWidget* parent)
{
    auto* l = new QListWidget(parent);
    l->setObjectName(QLatin1String(name));
    l->setSelectionMode(QAbstractItemView::SingleSelection);
    l->setMinimumWidth(200);
    return l;
}

QLabel* heading(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

} // namespace

frmCult1::frmCult1(QWidget* parent)
    : LevelGridWindow(QStringLiteral("frmCult1"),
        { QStringLiteral("CmdAddCultivar"), QStringLiteral("Command2"), QStringLiteral("cmdOK"),
            QStringLiteral("cmdCancel") },
        parent)
    , m_ListCrop(list("ListCrop", this))
    , m_ListDescription(list("ListDescription", this))
    , m_picture(new QLabel(this))
{
    bindGrid(m_editor.Data1());
    m_picture->setObjectName(QStringLiteral("Picture"));
    m_picture->setFixedSize(120, 120);
    m_picture->setAlignment(Qt::AlignCenter);
    m_DBGrid1->setMinimumWidth(360);

    connect(m_add, &QPushButton::clicked, this, [this] { m_editor.CmdAddCultivar_Click(); });
    connect(m_delete, &QPushButton::clicked, this, [this] { m_editor.Command2_Click(); });
    connect(m_ok, &QPushButton::clicked, this, [this] { m_editor.cmdOK_Click(); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_editor.cmdCancel_Click(); });
    for (QListWidget* l : { m_ListCrop, m_ListDescription }) {
        connect(l, &QListWidget::itemClicked, this, [this, l] { choose(l); });
        l->installEventFilter(this);
    }

    auto* crops = new QVBoxLayout;
    crops->addWidget(heading(ct::crop, this));
    crops->addWidget(m_ListCrop, 1);
    auto* cultivars = new QVBoxLayout;
    cultivars->addWidget(heading(ct::cultivar, this));
    cultivars->addWidget(m_ListDescription, 1);
    auto* lists = new QHBoxLayout;
    lists->addLayout(crops);
    lists->addLayout(cultivars);
    auto* side = new QVBoxLayout;
    side->addWidget(new QLabel(ct::listsHint, this));
    side->addLayout(lists, 1);
    auto* top = new QHBoxLayout;
    top->addLayout(gridWithButtons(), 3);
    top->addSpacing(12);
    top->addLayout(side, 4);
    top->addWidget(m_picture, 0, Qt::AlignTop);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addLayout(closingButtons());
    resize(980, 460);
}

frmCult1::~frmCult1()
{
    releaseGrid();
}

void frmCult1::Form_Load()
{
    m_editor.Form_Load();
    m_DBGrid1->setColumnWidth(0, 60);
    m_DBGrid1->setColumnWidth(1, 110);
}

void frmCult1::setCrops(const QStringList& names)
{
    QSignalBlocker blocker(m_ListCrop);
    m_ListCrop->clear();
    m_ListCrop->addItems(names);
}

void frmCult1::selectCrop(int row)
{
    QSignalBlocker blocker(m_ListCrop);
    m_ListCrop->setCurrentRow(row);
    if (row >= 0)
        m_ListCrop->scrollToItem(m_ListCrop->item(row));
}

void frmCult1::setCultivars(const QStringList& descriptions, int selected)
{
    QSignalBlocker blocker(m_ListDescription);
    m_ListDescription->clear();
    m_ListDescription->addItems(descriptions);
    m_ListDescription->setCurrentRow(selected);
    if (selected >= 0)
        m_ListDescription->scrollToItem(m_ListDescription->item(selected));
}

void frmCult1::showPicture(const QString& path)
{
    const QPixmap picture(path);
    if (picture.isNull())
        m_picture->clear();
    else
        m_picture->setPixmap(
            picture.scaled(m_picture->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void frmCult1::choose(QListWidget* l)
{
    const QListWidgetItem* item = l->currentItem();
    if (!item)
        return;
    if (l == m_ListCrop)
        m_editor.ListCrop_Click(item->text());
    else
        m_editor.ListDescription_Click(item->text());
}

bool frmCult1::eventFilter(QObject* watched, QEvent* event)
{
    auto* l = qobject_cast<QListWidget*>(watched);
    if (!l || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
        return LevelGridWindow::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    const bool chooses = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter
        || key->key() == Qt::Key_Space;
    // In a list Enter chooses, instead of OK.
    if (event->type() == QEvent::ShortcutOverride) {
        if (chooses)
            event->accept();
        return chooses;
    }
    if (chooses) {
        choose(l);
        return true;
    }
    if (l == m_ListCrop && !key->text().isEmpty() && key->text().at(0).isLetter()
        && !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        m_editor.FindNameByLetter(key->text().left(1));
        return true;
    }
    return LevelGridWindow::eventFilter(watched, event);
}

} // namespace quillon
