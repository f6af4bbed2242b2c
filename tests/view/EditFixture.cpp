#include "tests/view/EditFixture.h"

#include "ShellServicesModule/QLocalCfg.h"
#include "model/CTreeItemValue.h"
#include "model/EnumRecord.h"
#include "tests/support/WriteTraces.h"
#include "tests/view/EditorTexts.h"

#include <QApplication>
#include <QtTest>

EditFixture::EditFixture(const SimulatedDevices::Simulated &device, unsigned int accessMode)
{
    device.control->setQuiet(true);
    QLocalCfg::Instance()->SetUserLevel(0); // all rows
    m_camera = m_module.open(device, accessMode);
    ShellHost::instance()->setCurrentCameraID(m_camera.id);
    m_module.mainWidget().resize(900, 700);
    m_module.mainWidget().show();
    m_module.mainWidget().activateWindow();
    QVERIFY(ModuleFixture::waitForFirstUpdate(m_camera));
    QVERIFY(QTest::qWaitForWindowActive(&m_module.mainWidget()));
    QVERIFY(settle());
    control().setLogging(true);
}

EditFixture::~EditFixture()
{
    ShellHost::instance()->setCurrentCameraID(-1);
    ShellHost::instance()->setCanSetProperty(true);
    forgetModifiedCameras();
}

/// A register, little-endian and signed if it holds a number.
static QByteArray registerOf(const QByteArray &tag, const QByteArray &name, int nAddress,
                             int nLength, const QByteArray &mode = "RW")
{
    const QByteArray number =
        tag == "IntReg" ? "<Sign>Signed</Sign><Endianess>LittleEndian</Endianess>" : "";
    return '<' + tag + " Name=\"" + name + "\"><Address>" + QByteArray::number(nAddress)
        + "</Address><Length>" + QByteArray::number(nLength) + "</Length><AccessMode>" + mode
        + "</AccessMode><pPort>Device</pPort>" + number + "</" + tag + ">\n";
}

SimulatedDevices::Simulated EditFixture::handMade()
{
    const auto over = [](const QByteArray &tag, const QByteArray &name, const QByteArray &rest) {
        return '<' + tag + " Name=\"" + name + "\"><pValue>" + name + "Reg</pValue>" + rest + "</"
            + tag + ">\n";
    };
    const QByteArray entries = "<EnumEntry Name=\"One\"><Value>1</Value></EnumEntry>"
                               "<EnumEntry Name=\"Two\"><Value>2</Value></EnumEntry>";
    const QByteArray elements =
        over("Integer", "Big", "<Representation>PureNumber</Representation>")
        + registerOf("IntReg", "BigReg", 0x1000, 8)
        + over("Integer", "BigHex", "<Representation>HexNumber</Representation>")
        + registerOf("IntReg", "BigHexReg", 0x1010, 8)
        + "<Integer Name=\"Coarse\"><pValue>CoarseRule</pValue></Integer>\n"
          "<IntConverter Name=\"CoarseRule\"><FormulaTo>FROM &amp; 0xF0</FormulaTo>"
          "<FormulaFrom>TO</FormulaFrom><pValue>CoarseReg</pValue></IntConverter>\n"
        + registerOf("IntReg", "CoarseReg", 0x1020, 4)
        + over("Integer", "Grid", "<Min>10</Min><Max>50</Max><Inc>4</Inc>")
        + registerOf("IntReg", "GridReg", 0x1030, 4) + over("Integer", "SecretNumber", "")
        + registerOf("IntReg", "SecretNumberReg", 0x1050, 4, "WO")
        + registerOf("StringReg", "SecretText", 0x1070, 16, "WO")
        + over("Enumeration", "SecretMode", entries)
        + registerOf("IntReg", "SecretModeReg", 0x1080, 4, "WO")
        + over("Boolean", "SecretSwitch", "")
        + registerOf("IntReg", "SecretSwitchReg", 0x1090, 4, "WO");
    const SimulatedDevices::Simulated device = SimulatedDevices::fromDescription(
        descriptionOf({"Big", "BigHex", "Coarse", "Grid", "SecretNumber", "SecretText",
                       "SecretMode", "SecretSwitch"},
                      elements),
        QStringLiteral("hand-made"), SimulatorControl::MemoryPattern::Zero);
    device.control->poke(0x1030, QByteArray("\x12\0\0\0", 4)); // Grid 18
    return device;
}

VexaPropertyTreeItem *EditFixture::item(const QString &name)
{
    return m_camera.tree->propertyItemByName(name);
}

QWidget *EditFixture::editor(const QString &name)
{
    return view().indexWidget(view().indexOfItem(item(name), 1));
}

QWidget *EditFixture::focusOn(const QString &name)
{
    if (!m_module.mainWidget().isActiveWindow()) { // a box was up
        m_module.mainWidget().activateWindow();
        if (!QTest::qWaitForWindowActive(&m_module.mainWidget())) {
            return nullptr;
        }
    }
    view().flushEditorUpdates();
    view().scrollTo(view().indexOfItem(item(name), 0), QAbstractItemView::PositionAtCenter);
    QWidget *const pEditor = editor(name);
    if (!pEditor || !pEditor->isVisible() || !pEditor->isEnabled()) {
        return nullptr;
    }
    pEditor->setFocus(Qt::MouseFocusReason);
    return pEditor->hasFocus() ? pEditor : nullptr;
}

QString EditFixture::shown(const QString &name)
{
    return shownText(editor(name));
}

QString EditFixture::deviceValue(const QString &name)
{
    VexaPropertyTreeItem *const pItem = item(name);
    const QString strTag = pItem->tagName();
    // A value of its own, so that the item's does not move.
    const std::unique_ptr<CTreeItemValue> value = pItem->valueSnapshot();
    _NODE_INT_VALUE_ integer{};
    _NODE_FLOAT_VALUE_ real{};
    const EnumRecord entry;
    bool bOn = false;
    QString strText;
    qint64 nLength = 0;
    if (strTag == "Integer" && task().GetIntegerValue(name, &integer, nullptr, true, false)) {
        value->setValue(qint64(integer.value));
    } else if (strTag == "Float" && task().GetFloatValue(name, &real, nullptr, true, false)) {
        value->setValue(real.value);
    } else if (strTag == "Enumeration"
               && task().GetEnumerationValue(name, entry.get(), nullptr, true, false)) {
        value->setValue(int(entry->value));
    } else if (strTag == "Boolean" && task().GetBooleanValue(name, &bOn, nullptr, true, false)) {
        return bOn ? QStringLiteral("on") : QStringLiteral("off");
    } else if (strTag == "StringReg"
               && task().GetStringValue(name, &strText, &nLength, nullptr, true, false)) {
        return strText;
    } else {
        return QStringLiteral("none");
    }
    return value->displayValue();
}

bool EditFixture::changeBehindTheTree(const QString &name, const QVariant &value)
{
    const QString strTag = item(name)->tagName();
    const bool bDone = strTag == "Integer"
        ? task().SetIntegerValue(name, value.toLongLong(), nullptr)
        : strTag == "Float"     ? task().SetFloatValue(name, value.toFloat(), nullptr)
        : strTag == "StringReg" ? task().SetStringValue(name, value.toString(), nullptr)
                                : task().SetEnumerationValue(name, value.toUInt(), nullptr);
    tree().updateFeature(item(name), QGetFeaturesThread::UPDATE_EVERYTHING);
    QCoreApplication::processEvents();
    view().flushEditorUpdates();
    return bDone;
}

int EditFixture::writes() const
{
    return writesOf(m_camera).size();
}

bool EditFixture::settle()
{
    return waitForRefresh(m_camera, view());
}

EditFixture &SharedEditFixture::of(const QString &device)
{
    if (!m_pFixture || device != m_strDevice) {
        m_pFixture.reset(); // one client at a time
        m_pFixture = std::make_unique<EditFixture>(
            device.isEmpty() ? EditFixture::handMade() : SimulatedDevices::builtIn(device));
        m_strDevice = device;
    }
    forgetModifiedCameras();
    m_pFixture->forgetAccesses();
    return *m_pFixture;
}

void typeText(QWidget *editor, const QString &text)
{
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty()) {
        QTest::keyClick(editor, Qt::Key_Delete);
    } else {
        QTest::keyClicks(editor, text);
    }
}

BoxAnswers::BoxAnswers(Qt::Key key)
    : m_key(key)
{
    startTimer(5);
}

void BoxAnswers::timerEvent(QTimerEvent *)
{
    if (QWidget *const pBox = QApplication::activeModalWidget()) {
        ++m_nCount;
        QTest::keyClick(pBox, m_key);
    }
}
