#include "ControlKit/CustomLineEdit.h"

#include "host/controlkit/KitIcons.h"

#include <QAction>
#include <QCoreApplication>
#include <QEvent>
#include <QIcon>

CustomLineEdit::CustomLineEdit(int style, QWidget *parent)
    : QLineEdit(parent)
    , CustomQssHelper(this)
    , m_nStyle(style)
{
}

CustomLineEdit::~CustomLineEdit() = default;

void CustomLineEdit::cSetEnableSearchButton(bool enable)
{
    if (enable == bool(m_pSearchAction)) {
        return;
    }
    if (!enable) {
        disconnect(this, &QLineEdit::returnPressed, this, &CustomLineEdit::cSigSearchClicked);
        delete m_pSearchAction;
        m_pSearchAction = nullptr;
        return;
    }
    m_pSearchAction = addAction(QIcon(KitIcons::path("search")), TrailingPosition);
    nameSearchAction();
    connect(m_pSearchAction, &QAction::triggered, this, &CustomLineEdit::cSigSearchClicked);
    connect(this, &QLineEdit::returnPressed, this, &CustomLineEdit::cSigSearchClicked);
}

void CustomLineEdit::nameSearchAction()
{
    const QString name = QCoreApplication::translate("ControlKit", "lang_controlkit_search");
    m_pSearchAction->setText(name);
    m_pSearchAction->setToolTip(name);
}

void CustomLineEdit::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
        if (m_pSearchAction) {
            nameSearchAction();
        }
    }
}
