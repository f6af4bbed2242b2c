#include "ShellServicesModule/QPropertyLineEdit.h"
#include "host/translations/Translations.h"

#include <QApplication>
#include <QLocale>
#include <QToolTip>
#include <QVBoxLayout>
#include <QtTest>

#include <limits>

using Mode = QPropertyLineEdit::TextMode;

Q_DECLARE_METATYPE(QPropertyLineEdit::TextMode)

/// Every text goes in as key presses, every value comes out as the delegate takes it.
class tst_PropertyLineEdit : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { installLanguage(*qApp, QStringLiteral("ENG")); }
    void init();
    void cleanup();

    void typedText_data();
    void typedText();
    void numbersDoNotDependOnTheLocale();
    void aSavedTextIsNotSavedTwice();
    void refillBehindAnotherWindow();
    void aLongDeviceTextStaysUnmodified();

private:
    void type(const QString &text);
    bool isMarked() const;

    std::unique_ptr<QWidget> m_pWindow;
    QPropertyLineEdit *m_pEdit = nullptr;
    QLineEdit *m_pOther = nullptr;
};

void tst_PropertyLineEdit::init()
{
    m_pWindow = std::make_unique<QWidget>();
    auto *pLayout = new QVBoxLayout(m_pWindow.get());
    m_pEdit = new QPropertyLineEdit(1);
    m_pOther = new QLineEdit;
    pLayout->addWidget(m_pEdit);
    pLayout->addWidget(m_pOther);
    m_pWindow->show();
    m_pWindow->activateWindow();
    m_pEdit->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
    QTRY_VERIFY(m_pEdit->hasFocus());
}

void tst_PropertyLineEdit::cleanup()
{
    QLocale::setDefault(QLocale::c());
    m_pWindow.reset();
}

void tst_PropertyLineEdit::type(const QString &text)
{
    QTest::keyClick(m_pEdit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(m_pEdit, Qt::Key_Delete);
    QTest::keyClicks(m_pEdit, text);
}

/// Whether the red frame shows.
bool tst_PropertyLineEdit::isMarked() const
{
    return m_pEdit->grab().toImage().pixelColor(m_pEdit->width() / 2, 1)
        == QColor(0xFF, 0x52, 0x52);
}

void tst_PropertyLineEdit::typedText_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QVariant>("value"); // none when the text is refused
    QTest::addColumn<QString>("reason"); // how it ends
    QTest::addColumn<QVariant>("minimum");
    QTest::addColumn<QVariant>("maximum");
    const auto taken = [](const char *name, Mode mode, const QString &typed, const QVariant &value,
                          const QVariant &minimum = {}, const QVariant &maximum = {}) {
        QTest::newRow(name) << mode << typed << value << QString() << minimum << maximum;
    };
    const auto refused = [](const char *name, Mode mode, const QString &typed,
                            const QString &reason = {}, const QVariant &minimum = {},
                            const QVariant &maximum = {}) {
        QTest::newRow(name) << mode << typed << QVariant() << reason << minimum << maximum;
    };
    const qint64 nSmallest = std::numeric_limits<qint64>::min();
    const qint64 nMost = std::numeric_limits<qint64>::max();

    taken("leading zeros read as octal", Mode::TEXT_DECIMAL, "0010", Q_INT64_C(10));
    taken("hex without prefix read as decimal", Mode::TEXT_HEX, "20", Q_INT64_C(32));
    taken("top bit of 64", Mode::TEXT_HEX, "0x8000000000000000", nSmallest);
    taken("hex with more digits than bits", Mode::TEXT_HEX, "0x000000000000000000FF",
          Q_INT64_C(255));
    taken("padded address read as octal", Mode::TEXT_IPV4, "010.001.000.099",
          Q_INT64_C(0x0A010063));
    taken("decimal comma", Mode::TEXT_FLOAT, "12,5", 12.5);
    taken("string trimmed", Mode::TEXT_STRING, " a b ", QString(" a b "));
    taken("range upside down locks the value", Mode::TEXT_DECIMAL, "3", 3LL, 5LL, 0LL);
    taken("float end itself refused for its rounding", Mode::TEXT_FLOAT, "0.1", 0.1, 0.1f, 0.9f);

    refused("hex over 64 bits wraps", Mode::TEXT_HEX, "0x10000000000000000");
    refused("part over 255", Mode::TEXT_IPV4, "192.168.1.256");
    refused("mask with a hole", Mode::TEXT_MASK, "255.0.255.0");
    refused("MAC of five bytes", Mode::TEXT_MAC, "00:11:22:33:44");
    refused("thousands and decimals", Mode::TEXT_FLOAT, "1,234.5");
    refused("float beyond a double becomes infinite", Mode::TEXT_FLOAT, "1e999");
    refused("64-bit ends compared as doubles", Mode::TEXT_DECIMAL, QString::number(nMost),
            "and 9223372036854775806.", 0LL, nMost - 1);
    refused("double compared in float", Mode::TEXT_FLOAT, "1.00000000001", "between 0 and 1.", 0.0,
            1.0);
    refused("hex out of range", Mode::TEXT_HEX, "100", "and 0xFF.", 0LL, 255LL);
}

void tst_PropertyLineEdit::typedText()
{
    QFETCH(Mode, mode);
    QFETCH(QString, typed);
    QFETCH(QVariant, value);
    QFETCH(QString, reason);
    QFETCH(QVariant, minimum);
    QFETCH(QVariant, maximum);
    m_pEdit->setAccessibleDescription("Gain of the sensor");
    m_pEdit->SetText("7", mode);
    if (minimum.isValid()) {
        m_pEdit->SetRange(maximum, minimum);
    }
    type(typed);
    QVariant saved("untouched");
    QCOMPARE(m_pEdit->SaveProperty(saved), value.isValid());
    QCOMPARE(isMarked(), !value.isValid());
    if (value.isValid()) {
        QCOMPARE(saved.userType(), value.userType());
        QCOMPARE(saved, value);
        return;
    }
    QCOMPARE(saved, QVariant("untouched"));
    QCOMPARE(m_pEdit->text(), typed);
    m_pEdit->Rollback();
    QCOMPARE(m_pEdit->text(), QString("7"));
    // The reason outlives the roll-back that follows at once.
    QVERIFY(isMarked());
    const QString told = m_pEdit->accessibleDescription();
    QVERIFY2(told != "Gain of the sensor" && told.endsWith(reason), qPrintable(told));
    QTRY_VERIFY(QToolTip::text().contains(told.toHtmlEscaped()));
    type("1");
    QCOMPARE(m_pEdit->accessibleDescription(), QString("Gain of the sensor"));
}

void tst_PropertyLineEdit::numbersDoNotDependOnTheLocale()
{
    // Its digits are others, and so is the mark before the decimals.
    const QLocale locale(QLocale::Arabic, QLocale::Egypt);
    QLocale::setDefault(locale);
    m_pEdit->setLocale(locale);
    QVariant saved;
    for (const char *pTyped : {"1234.5", "1234,5"}) {
        m_pEdit->SetText("0.00", Mode::TEXT_FLOAT);
        type(pTyped);
        QVERIFY(m_pEdit->SaveProperty(saved));
        QCOMPARE(saved.toDouble(), 1234.5);
    }
}

void tst_PropertyLineEdit::aSavedTextIsNotSavedTwice()
{
    int nSaved = 0;
    QVariant value;
    connect(m_pEdit, &QLineEdit::editingFinished, this, [&] {
        if (m_pEdit->SaveProperty(value)) {
            ++nSaved;
        } else {
            m_pEdit->Rollback();
        }
    });
    m_pEdit->SetText("1", Mode::TEXT_DECIMAL);
    type("2");
    QTest::keyClick(m_pEdit, Qt::Key_Return);
    QTest::keyClick(m_pEdit, Qt::Key_Tab); // finishes the edit a second time, before any refill
    QCOMPARE(nSaved, 1);
    QCOMPARE(m_pEdit->text(), QString("2"));
    m_pEdit->SetText("1", Mode::TEXT_DECIMAL); // the device refused it
    QCOMPARE(m_pEdit->text(), QString("1"));
}

void tst_PropertyLineEdit::refillBehindAnotherWindow()
{
    m_pEdit->SetText("1", Mode::TEXT_DECIMAL);
    type("25");
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QTRY_VERIFY(!m_pEdit->hasFocus());
    m_pEdit->SetText("3", Mode::TEXT_DECIMAL);
    QCOMPARE(m_pEdit->text(), QString("25"));
}

void tst_PropertyLineEdit::aLongDeviceTextStaysUnmodified()
{
    const QString strLong(70000, QLatin1Char('x'));
    m_pEdit->SetText(strLong, Mode::TEXT_STRING);
    QVariant saved;
    QVERIFY(!m_pEdit->SaveProperty(saved));
    QCOMPARE(m_pEdit->text().size(), strLong.size());

    m_pEdit->SetText("", Mode::TEXT_STRING);
    m_pEdit->SetStringLength(5);
    m_pEdit->setText(QString::fromUtf8("五五"));
    QVERIFY2(!m_pEdit->SaveProperty(saved), "the limit counts bytes of UTF-8");
    m_pEdit->setText(QString::fromUtf8("五ab"));
    QVERIFY(m_pEdit->SaveProperty(saved));
    m_pEdit->SetStringLength(0);
    m_pEdit->setText(strLong.left(100));
    QVERIFY(m_pEdit->SaveProperty(saved));
}

QTEST_MAIN(tst_PropertyLineEdit)
#include "tst_propertylineedit.moc"
