#pragma once

#include "ShellServicesModule/QLocalCfg.h"
#include "host/shellservices/ShellHost.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "tests/model/PageFixture.h"
#include "tests/view/EditFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>

/// One page of format rows over a simulated device, on screen.
class FormatFixture
{
public:
    FormatFixture(const SimulatedDevices::Simulated &device, const QStringList &nodes)
    {
        device.control->setQuiet(true);
        QLocalCfg::Instance()->SetUserLevel(0);
        m_camera = m_module.open(device);
        if (!ModuleFixture::waitForFirstUpdate(m_camera)) {
            return;
        }
        QString strPage = QStringLiteral("<Category Name=\"Page\">");
        for (const QString &strNode : nodes) {
            strPage += QStringLiteral("<Feature Name=\"%1\"/>").arg(strNode);
        }
        m_pPages = std::make_unique<TestPages>(strPage + QStringLiteral("</Category>"));
        m_pPages->setCameraID(m_camera.id);
        m_pPages->treeView()->setGeometry(0, 0, 520, 900);
        m_pPages->resize(520, 900);
        m_pPages->show();
        m_pPages->activateWindow();
        m_pPages->treeView()->expandAll();
        m_bReady = QTest::qWaitForWindowActive(m_pPages.get());
        m_camera.device.control->setLogging(true);
    }
    ~FormatFixture()
    {
        m_pPages.reset();
        if (m_camera.tree) {
            m_module.close(m_camera);
        }
        for (const QString &strName : ShellHost::instance()->modifiedCameras()) {
            ShellHost::instance()->removeModifiedCamera(strName);
        }
    }
    Q_DISABLE_COPY(FormatFixture)

    QWidget *editor(const QString &strNode)
    {
        VexaFeatureTreeView &view = *m_pPages->treeView();
        VexaPropertyTreeItem *const pRow = m_pPages->row("Custom_" + strNode);
        QWidget *const pEditor = pRow ? view.indexWidget(view.indexOfItem(pRow, 1)) : nullptr;
        if (pEditor) {
            view.scrollTo(view.indexOfItem(pRow, 0), QAbstractItemView::PositionAtCenter);
        }
        return pEditor;
    }
    QTextEdit *box(const QString &strNode)
    {
        return editor(strNode) ? editor(strNode)->findChild<QTextEdit *>() : nullptr;
    }
    QPushButton *button(const QString &strNode)
    {
        return editor(strNode) ? editor(strNode)->findChild<QPushButton *>() : nullptr;
    }
    QString counter(const QString &strNode)
    {
        return editor(strNode)->findChildren<QLabel *>().last()->text();
    }
    VexaPropertyTreeItem *feature(const QString &strNode)
    {
        return m_camera.tree->propertyItemByName(strNode);
    }
    /// The enumeration of this name; null for any other node.
    CTreeEnumationItemValue *entries(const QString &strNode)
    {
        return feature(strNode) ? dynamic_cast<CTreeEnumationItemValue *>(feature(strNode)->value())
                                : nullptr;
    }
    QString deviceText(const QString &strNode)
    {
        QString strText = QStringLiteral("none");
        taskOf(m_camera)->GetStringValue(strNode, &strText, nullptr, nullptr, true, false);
        return strText;
    }
    /// The device's text changes without the editor, and the row has taken it over.
    bool changeBehind(const QString &strNode, const QString &strText)
    {
        taskOf(m_camera)->SetStringValue(strNode, strText, nullptr);
        m_camera.tree->updateFeature(feature(strNode), 15);
        const auto *pValue = dynamic_cast<CTreeStringItemValue *>(feature(strNode)->value());
        QCoreApplication::processEvents();
        return pValue && pValue->m_strValue == strText;
    }
    QVector<SimulatorAccess> writes() const
    {
        QVector<SimulatorAccess> found;
        for (const SimulatorAccess &access : m_camera.device.control->accessLog()) {
            if (access.kind == SimulatorAccess::Write) {
                found.append(access);
            }
        }
        return found;
    }
    void forgetWrites()
    {
        m_camera.device.control->clearAccessLog();
        for (const QString &strName : ShellHost::instance()->modifiedCameras()) {
            ShellHost::instance()->removeModifiedCamera(strName);
        }
    }

    ModuleFixture m_module;
    ModuleFixture::Camera m_camera;
    std::unique_ptr<TestPages> m_pPages;
    bool m_bReady = false;
};

inline void paste(QWidget *pBox, const QString &strText)
{
    QGuiApplication::clipboard()->setText(strText);
    QTest::keyClick(pBox, Qt::Key_V, Qt::ControlModifier);
}

/// Clicks into the box and does what the words say: "paste:...", "clear", "esc", "back", else the text is typed.
inline void act(QTextEdit *pBox, const QStringList &words)
{
    QTest::mouseClick(pBox->viewport(), Qt::LeftButton);
    pBox->moveCursor(QTextCursor::End);
    for (const QString &strWord : words) {
        if (strWord.startsWith("paste:")) {
            paste(pBox, strWord.mid(6));
        } else if (strWord == "clear") {
            QTest::keyClick(pBox, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(pBox, Qt::Key_Backspace);
        } else if (strWord == "esc") {
            QTest::keyClick(pBox, Qt::Key_Escape);
        } else if (strWord == "back") {
            QTest::keyClick(pBox, Qt::Key_Backspace);
        } else {
            QTest::keyClicks(pBox, strWord);
        }
    }
}

inline QMenu *menuOf(const QWidget *pEditor)
{
    return pEditor->findChild<QMenu *>(QString(), Qt::FindDirectChildrenOnly);
}
