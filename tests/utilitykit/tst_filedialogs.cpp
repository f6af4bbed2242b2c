#include "UtilityKit/VexaInterface.h"
#include "host/utilitykit/FileDialogs.h"
#include "host/utilitykit/UtilityHost.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <functional>

class tst_FileDialogs : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void save_data();
    void save();
    void openIsRemembered();
    void parentDestroyedMeanwhile();

private:
    /// Does this with the dialog as soon as one is up.
    void whenOpen(const std::function<void(QFileDialog *)> &act);
    QTemporaryDir m_folder;
};

void tst_FileDialogs::initTestCase()
{
    UtilityHost::useTransientSettings();
    QFile file(m_folder.filePath(QStringLiteral("there.vxf")));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void tst_FileDialogs::whenOpen(const std::function<void(QFileDialog *)> &act)
{
    auto *const poll = new QTimer(this);
    connect(poll, &QTimer::timeout, this, [poll, act] {
        if (auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
            poll->deleteLater();
            poll->stop();
            act(dialog);
        }
    });
    poll->start(5);
}

void tst_FileDialogs::save_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepts");
    QTest::addColumn<QString>("name");
    QTest::newRow("suffix added") << "features" << true << "features.vxf";
    QTest::newRow("suffix doubled") << "features.vxf" << true << "features.vxf";
    QTest::newRow("other suffix kept") << "features.txt" << true << "features.txt";
    QTest::newRow("given up") << "features" << false << "";
}

void tst_FileDialogs::save()
{
    QFETCH(QString, typed);
    QFETCH(bool, accepts);
    QFETCH(QString, name);
    whenOpen([typed, accepts](QFileDialog *dialog) {
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(typed);
        QTest::keyClick(dialog, accepts ? Qt::Key_Return : Qt::Key_Escape);
    });
    const QString answer = FileDialogs::saveFile(
        nullptr, QStringLiteral("Save"), m_folder.path() + QStringLiteral("/x.vxf"),
        QStringLiteral("Features (*.vxf)"), QStringLiteral("vxf"));
    QCOMPARE(answer, name.isEmpty() ? QString() : m_folder.filePath(name));
}

void tst_FileDialogs::openIsRemembered()
{
    whenOpen([](QFileDialog *dialog) {
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))
            ->setText(QStringLiteral("there.vxf"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    const QString chosen = VexaInterface::getOpenFileName(nullptr, QString(), m_folder.path(),
                                                          QStringLiteral("*.vxf"));
    QCOMPARE(chosen, m_folder.filePath(QStringLiteral("there.vxf")));

    QString folder;
    whenOpen([&folder](QFileDialog *dialog) {
        folder = dialog->directory().absolutePath();
        dialog->reject();
    });
    QCOMPARE(VexaInterface::getSaveFileName(nullptr, QString(), QString(), QString()), QString());
    QCOMPARE(folder, m_folder.path());

    for (const char *filter : {"Text Files(*.txt)", "All(*.*)", "Pictures (*.png *.jpg)"}) {
        whenOpen([](QFileDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
        const bool isOneKind = QLatin1String(filter).startsWith(QLatin1String("Text"));
        QCOMPARE(
            VexaInterface::getSaveFileName(nullptr, QString(), QStringLiteral("note"),
                                           QLatin1String(filter)),
            m_folder.filePath(isOneKind ? QStringLiteral("note.txt") : QStringLiteral("note")));
    }
}

void tst_FileDialogs::parentDestroyedMeanwhile()
{
    auto *const parent = new QWidget;
    whenOpen([parent](QFileDialog *) { delete parent; });
    QCOMPARE(VexaInterface::getOpenFileName(parent, QString(), m_folder.path(), QString()),
             QString());
}

QTEST_MAIN(tst_FileDialogs)
#include "tst_filedialogs.moc"
