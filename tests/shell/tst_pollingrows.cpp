#include "DeviceTaskModule/NodeValues.h"
#include "shell/PollingRoles.h"
#include "tests/support/DataTable.h"
#include "tests/support/ModuleFixture.h"

#include <QDateTime>
#include <QStandardItemModel>

namespace {

using Numbers = QMap<int, int>;

/// A host's table: the first column names the node, then one column for each set and one for the time of change.
struct HostTable
{
    explicit HostTable(const QStringList &nodes, int sets = 4)
    {
        for (const QString &node : nodes) {
            QList<QStandardItem *> row{new QStandardItem(node)};
            while (row.size() < sets) {
                row.append(new QStandardItem);
                row.last()->setData(QVariant::fromValue(Numbers{{0, 7}}), POLLING_ROLE_MAP);
            }
            if (sets > 1) {
                row.append(new QStandardItem(QStringLiteral("PollingParamChgTime")));
            }
            m_model.appendRow(row);
            m_rows.insert(m_rows.size(), row);
        }
    }
    /// What a write left in the cells, as "row,column value map changed" for each touched cell.
    QString touched() const
    {
        const QString today =
            QLocale::system().toString(QDateTime::currentDateTime(), "yyyy-MM-dd");
        QStringList cells;
        for (const QList<QStandardItem *> &row : m_rows) {
            for (const QStandardItem *cell : row) {
                QString text = cell->data(POLLING_ROLE_VALUE).toString().replace(today, "today");
                const auto map = cell->data(POLLING_ROLE_MAP).value<Numbers>();
                for (auto it = map.upperBound(0); it != map.cend(); ++it) {
                    text += QStringLiteral(" [%1]%2").arg(it.key()).arg(*it);
                }
                text += cell->data(POLLING_ROLE_CHANGED).toBool() ? " changed" : "";
                if (!text.isEmpty()) {
                    cells.append(QStringLiteral("%1,%2 ").arg(cell->row()).arg(cell->column())
                                 + text);
                }
            }
        }
        return cells.join("; ");
    }
    QStandardItemModel m_model;
    QMap<int, QList<QStandardItem *>> m_rows;
};

} // namespace

class tst_pollingrows : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup() { m_pFixture->mainWidget().DeletePollingMap(m_camera.id); }
    void cleanupTestCase() { m_pFixture.reset(); }
    void writesGoToTheSelectedSet_data();
    void writesGoToTheSelectedSet();
    void hostTakesItsRowsBackMeanwhile();

private:
    void select(const char *node, quint32 value)
    {
        const QString name = QLatin1String(node);
        QVERIFY(taskOf(m_camera)->SetEnumerationValue(name, value, nullptr));
        m_camera.tree->getFeatureValueFromCamera(m_camera.tree->propertyItemByName(name));
    }
    std::unique_ptr<ModuleFixture> m_pFixture;
    ModuleFixture::Camera m_camera;
};

void tst_pollingrows::initTestCase()
{
    m_pFixture = std::make_unique<ModuleFixture>();
    m_camera = m_pFixture->open(SimulatedDevices::builtIn("code-reader"));
    QVERIFY(ModuleFixture::waitForFirstUpdate(m_camera));
}

void tst_pollingrows::writesGoToTheSelectedSet_data()
{
    const DataTable<QString, QString, int, int, QString> row("node", "value", "set", "sets",
                                                             "touched");
    row("text", "PollingParamName", "near", 2, 4, "0,2 near; 0,4 today");
    row("light of the segment", "PollingLightEnable", "1", 3, 4, "2,3 1; 2,4 today; 4,3  [2]1");
    row("action of the line", "PollingIOAction", "3", 1, 4, "3,1 3; 3,4 today; 5,1  [1]3");
    row("table narrower than the sets", "PollingLightEnable", "1", 6, 4, "");
    row("camera without rows", "PollingGain", "1.50", 1, 0, "");
}

void tst_pollingrows::writesGoToTheSelectedSet()
{
    QFETCH(QString, node);
    QFETCH(QString, value);
    QFETCH(int, set);
    QFETCH(int, sets);
    QFETCH(QString, touched);
    const HostTable table({"PollingParamName", "PollingFocusPos", "PollingLightEnable",
                           "PollingIOAction", "PollingLightSelector", "PollingIOSelector"},
                          sets);
    VexaMainFeatureWidget &widget = m_pFixture->mainWidget();
    if (sets > 0) {
        widget.SetPollingMap(m_camera.id, table.m_rows);
    }
    select("PollingParam", static_cast<quint32>(set));
    select("PollingLightSelector", 2);
    select("PollingIOSelector", 1);
    const QString stamp = QStringLiteral("PollingParamChgTime");
    QVERIFY(taskOf(m_camera)->SetIntegerValue(stamp, 1, nullptr));
    m_camera.tree->UpdatePollingValue(node, value);
    _NODE_INT_VALUE_ time;
    QVERIFY(taskOf(m_camera)->GetIntegerValue(stamp, &time, nullptr, false, false));
    QVERIFY(qAbs(QDateTime::currentSecsSinceEpoch() - time.value) < 60);
    QCOMPARE(table.touched(), touched);
}

void tst_pollingrows::hostTakesItsRowsBackMeanwhile()
{
    for (const QString node : {"PollingFocusPos", "PollingIOAction"}) {
        HostTable table({node, QStringLiteral("PollingIOSelector")});
        VexaMainFeatureWidget &widget = m_pFixture->mainWidget();
        widget.SetPollingMap(m_camera.id, table.m_rows);
        select("PollingParam", 1);
        int changes = 0;
        connect(&table.m_model, &QStandardItemModel::itemChanged, this, [&] {
            ++changes;
            widget.DeletePollingMap(m_camera.id);
            table.m_model.removeRows(1, 1);
        });
        m_camera.tree->UpdatePollingValue(node, QStringLiteral("5"));
        QCOMPARE(changes, 1);
    }
}

QTEST_MAIN(tst_pollingrows)
#include "tst_pollingrows.moc"
