#pragma once

#include "ShellServicesModule/QLocalCfg.h"
#include "tests/model/PageFixture.h"
#include "tests/support/WriteTraces.h"

#include <QtEndian>
#include <QtTest>

/// Pages of a host with what it gives the rows that the builder leaves open.
class RowPages : public TestPages
{
public:
    using IVexaFeatureWidget::setLightingItems;
    using IVexaFeatureWidget::setRowCamera;
    VexaPropertyTreeItem *rowBelow(VexaPropertyTreeItem *pRoot, const QString &strName) const
    {
        return pageItem(pRoot, strName);
    }
    using TestPages::TestPages;
};

/// A page of features of a simulated device on screen, with its access log and its registers.
class RowFixture
{
public:
    RowFixture(const QString &strDevice, const QStringList &features)
        : RowFixture(SimulatedDevices::builtIn(strDevice), features)
    {
    }
    RowFixture(const SimulatedDevices::Simulated &device, const QStringList &features)
        : pages("<Category Name=\"P\"><Feature Name=\"" + features.join("\"/><Feature Name=\"")
                + "\"/></Category>")
    {
        device.control->setQuiet(true);
        QLocalCfg::Instance()->SetUserLevel(0); // all rows
        camera = module.open(device);
        ShellHost::instance()->setCurrentCameraID(camera.id);
        QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
        description.setContent(device.control->description());
        control().setLogging(true);
    }
    ~RowFixture()
    {
        pages.removeCameraID(camera.id);
        if (camera.tree) {
            module.close(camera);
        }
        ShellHost::instance()->setCurrentCameraID(-1);
        forgetModifiedCameras();
    }
    Q_DISABLE_COPY(RowFixture)

    /// Lays the page; the editors of its rows are open then.
    void show(const QSize &size = QSize(700, 500))
    {
        pages.setCameraID(camera.id);
        pages.resize(size);
        pages.treeView()->setGeometry(pages.rect());
        pages.show();
        pages.activateWindow();
        pages.treeView()->expandAll();
        QVERIFY(QTest::qWaitForWindowActive(&pages));
    }
    template<typename Editor>
    Editor *editor(const QString &strRow)
    {
        pages.treeView()->flushEditorUpdates();
        VexaPropertyTreeItem *const pRow = pages.row(strRow);
        return pRow ? qobject_cast<Editor *>(
                   pages.treeView()->indexWidget(pages.treeView()->indexOfItem(pRow, 1)))
                    : nullptr;
    }
    VexaFeatureTree &tree() { return *camera.tree; }
    SimulatorControl &control() { return *camera.device.control; }
    VexaPropertyTreeItem *feature(const QString &strName)
    {
        return tree().propertyItemByName(strName);
    }
    quint64 address(const QString &strNode)
    {
        const QDomNodeList registers = description.elementsByTagName(QStringLiteral("IntReg"));
        for (int nIndex = 0; nIndex < registers.size(); ++nIndex) {
            const QDomElement node = registers.at(nIndex).toElement();
            if (node.attribute("Name") == strNode + QLatin1String("Reg")) {
                return node.firstChildElement("Address").text().toULongLong(nullptr, 0);
            }
        }
        return 0;
    }
    /// An element of the register of a node, past the tree.
    int inDevice(const QString &strNode, int nElement = 0)
    {
        return qFromBigEndian<qint32>(
            control().peek(address(strNode) + quint64(4 * nElement), 4).constData());
    }
    void poke(const QString &strNode, int nElement, qint32 nValue)
    {
        QByteArray bytes(4, 0);
        qToBigEndian(nValue, bytes.data());
        control().poke(address(strNode) + quint64(4 * nElement), bytes);
    }
    /// Writes since the last forget, by the names given: "S E2" for the first register and element 2 of the second.
    QString writes(const QMap<QString, QString> &names)
    {
        QStringList texts;
        for (const SimulatorAccess &access : writesOf(camera)) {
            QString strText = QStringLiteral("?");
            quint64 nNearest = 0;
            for (auto it = names.cbegin(); it != names.cend(); ++it) {
                const quint64 nFrom = address(it.value());
                if (access.address >= nFrom && access.address < nFrom + 32 && nFrom > nNearest) {
                    nNearest = nFrom;
                    const int nElement = int(access.address - nFrom) / 4;
                    strText = it.key() + (nElement ? QString::number(nElement) : QString());
                }
            }
            texts << strText;
        }
        return texts.join(' ');
    }
    int writeCount() const { return writesOf(camera).size(); }
    void forget()
    {
        control().clearAccessLog();
        forgetModifiedCameras();
    }
    bool settle() { return waitForRefresh(camera, *pages.treeView()); }

    ModuleFixture module;
    ModuleFixture::Camera camera;
    RowPages pages;

private:
    QDomDocument description;
};
