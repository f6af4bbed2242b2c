#include "host/workbench/FormatEditDialog.h"

#include "ControlKit/Custom.h"
#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomPushButton.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int ACCENT_STYLE = 1;
constexpr int BUTTON_STYLE = 2;
constexpr int FIRST_PRINTABLE = 0x20;
constexpr int LAST_PRINTABLE = 0x7E;
constexpr int LAST_CHARACTER = 0x7F;
constexpr int TWO_LINES = 44; // pixels
constexpr int ROW_HEIGHT = 28; // pixels
constexpr int PUT_IN_ROLE = Qt::UserRole;

/// What the table shows of a character that has no picture.
QString nameOf(int nCode)
{
    static const char *const names[] = {
        "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "HT",  "LF",
        "VT",  "FF",  "CR",  "SO",  "SI",  "DLE", "DC1", "DC2", "DC3", "DC4", "NAK",
        "SYN", "ETB", "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US",  "SP"};
    if (nCode <= FIRST_PRINTABLE) {
        return QString::fromLatin1(names[nCode]);
    }
    return nCode == LAST_CHARACTER ? QStringLiteral("DEL") : QString(QChar(nCode));
}

CustomPushButton *makeButton(int nStyle, const char *pKey, QWidget *pParent)
{
    auto *const pButton = new CustomPushButton(nStyle, pParent);
    pButton->setText(workbenchText(pKey));
    pButton->setMinimumSize(90, 32);
    return pButton;
}

CustomLabel *makeLabel(const QString &strText, QWidget *pParent)
{
    auto *const pLabel = new CustomLabel(strText, pParent);
    pLabel->cSetFontSize(13);
    pLabel->cSetFontColor(QColor(QStringLiteral("#D1D1D1")));
    return pLabel;
}

} // namespace

FormatEditDialog::FormatEditDialog(const Content &content, QWidget *pParent)
    : QDialog(pParent)
    , m_nMaxBytes(content.nMaxBytes)
    , m_bBytes(content.bBytes)
    , m_objection(content.objection)
    , m_pText(new QPlainTextEdit(this))
    , m_pCounter(makeLabel(QString(), this))
    , m_pTags(new QListWidget(this))
    , m_pCharacters(new QTableWidget(this))
    , m_pOk(makeButton(ACCENT_STYLE, "lang_workbench_ok", this))
{
    setObjectName(QStringLiteral("FormatEditDialog"));
    setWindowTitle(content.strTitle);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_pText->setObjectName(QStringLiteral("FormatText"));
    m_pText->setStyleSheet(Custom::styleSheet(Custom::STYLE_TEXT_EDIT));
    m_pText->setAccessibleName(content.strTitle);
    m_pText->setPlainText(content.strText);
    m_pText->moveCursor(QTextCursor::End);
    m_pText->setTabChangesFocus(true);
    fillTags(content.tags);
    fillCharacters();

    auto *const pCancel = makeButton(BUTTON_STYLE, "lang_workbench_cancel", this);
    auto *const pLists = new QHBoxLayout;
    if (!content.tags.isEmpty()) {
        auto *const pTagColumn = new QVBoxLayout;
        pTagColumn->addWidget(makeLabel(workbenchText("lang_workbench_tags"), this));
        pTagColumn->addWidget(m_pTags);
        pLists->addLayout(pTagColumn, 1);
    }
    m_pTags->setVisible(!content.tags.isEmpty());
    auto *const pCharacterColumn = new QVBoxLayout;
    pCharacterColumn->addWidget(makeLabel(workbenchText("lang_workbench_ascii"), this));
    pCharacterColumn->addWidget(m_pCharacters);
    pLists->addLayout(pCharacterColumn, 1);
    auto *const pButtons = new QHBoxLayout;
    m_pCounter->setWordWrap(true);
    m_pCounter->setMinimumHeight(TWO_LINES);
    pButtons->addWidget(m_pCounter, 1);
    pButtons->addWidget(m_pOk);
    pButtons->addWidget(pCancel);
    auto *const pColumn = new QVBoxLayout(this);
    pColumn->addWidget(m_pText, 1);
    pColumn->addLayout(pLists, 3);
    pColumn->addLayout(pButtons);
    resize(640, 520);

    connect(m_pText, &QPlainTextEdit::textChanged, this, &FormatEditDialog::check);
    connect(m_pTags, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem *pItem) { putIn(pItem->data(PUT_IN_ROLE).toString()); });
    connect(m_pCharacters, &QTableWidget::cellActivated, this, [this](int nRow) {
        putIn(m_pCharacters->item(nRow, 0)->data(PUT_IN_ROLE).toString());
    });
    connect(m_pOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(pCancel, &QPushButton::clicked, this, &QDialog::reject);
    // Enter in a list puts something in; it does not end the dialog.
    m_pOk->setAutoDefault(false);
    pCancel->setAutoDefault(false);
    check();
    m_pText->setFocus();
}

void FormatEditDialog::fillTags(const QVector<Tag> &tags)
{
    m_pTags->setObjectName(QStringLiteral("FormatTags"));
    m_pTags->setAccessibleName(workbenchText("lang_workbench_tags"));
    for (const Tag &tag : tags) {
        auto *const pItem = new QListWidgetItem(tag.strShown, m_pTags);
        pItem->setData(PUT_IN_ROLE, tag.strText);
        pItem->setToolTip(tag.strText.toHtmlEscaped());
    }
}

void FormatEditDialog::fillCharacters()
{
    m_pCharacters->setObjectName(QStringLiteral("AsciiTable"));
    m_pCharacters->setAccessibleName(workbenchText("lang_workbench_ascii"));
    m_pCharacters->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pCharacters->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pCharacters->setTabKeyNavigation(false);
    m_pCharacters->verticalHeader()->hide();
    // A text box takes no control characters; bytes may be any.
    const int nFirst = m_bBytes ? 0 : FIRST_PRINTABLE;
    const int nLast = m_bBytes ? LAST_CHARACTER : LAST_PRINTABLE;
    m_pCharacters->setColumnCount(3);
    m_pCharacters->setRowCount(nLast - nFirst + 1);
    m_pCharacters->setHorizontalHeaderLabels({workbenchText("lang_workbench_character"),
                                              workbenchText("lang_workbench_decimal"),
                                              workbenchText("lang_workbench_hexadecimal")});
    m_pCharacters->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_pCharacters->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_pCharacters->verticalHeader()->setMinimumSectionSize(ROW_HEIGHT);
    m_pCharacters->verticalHeader()->setDefaultSectionSize(ROW_HEIGHT);
    for (int nCode = nFirst; nCode <= nLast; ++nCode) {
        const QString strHex = QStringLiteral("%1").arg(nCode, 2, 16, QLatin1Char('0')).toUpper();
        const int nRow = nCode - nFirst;
        const QString cells[] = {nameOf(nCode), QString::number(nCode), strHex};
        for (int nColumn = 0; nColumn < 3; ++nColumn) {
            m_pCharacters->setItem(nRow, nColumn, new QTableWidgetItem(cells[nColumn]));
        }
        m_pCharacters->item(nRow, 0)->setData(PUT_IN_ROLE,
                                              m_bBytes ? strHex : QString(QChar(nCode)));
    }
}

QString FormatEditDialog::text() const
{
    return m_pText->toPlainText();
}

void FormatEditDialog::putIn(const QString &strText)
{
    QTextCursor cursor = m_pText->textCursor();
    QString strWhole = text();
    const int nStart = cursor.selectionStart();
    const bool bApart = m_bBytes && nStart > 0 && !strWhole.at(nStart - 1).isSpace();
    const QString strNew = bApart ? QLatin1Char(' ') + strText : strText;
    strWhole.replace(nStart, cursor.selectionEnd() - nStart, strNew);
    // What does not fit is not put in half.
    if (strWhole.toUtf8().size() <= m_nMaxBytes) {
        cursor.insertText(strNew);
        m_pText->setTextCursor(cursor);
    }
}

void FormatEditDialog::check()
{
    const int nBytes = text().toUtf8().size();
    const QString strObjection = m_objection(text());
    const bool bTaken = nBytes <= m_nMaxBytes && strObjection.isEmpty();
    m_pCounter->setText(strObjection.isEmpty()
                            ? QStringLiteral("%1/%2").arg(nBytes).arg(m_nMaxBytes)
                            : strObjection);
    m_pCounter->cSetFontColor(
        QColor(bTaken ? QStringLiteral("#D1D1D1") : QStringLiteral("#E5484D")));
    m_pOk->setEnabled(bTaken);
}
