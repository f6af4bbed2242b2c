#pragma once

#include "ControlKit/CustomLineEdit.h"
#include "ShellServicesModule/ShellServicesModuleGlobal.h"

#include <QVariant>

#include <memory>

/// Line edit for the value of one feature. GUI thread. A refill never overwrites what the user is typing: while
/// the edit has the focus and was modified, SetText keeps the new text back until commit, Rollback or Escape.
/// A value that the user has not changed is not saved: SaveProperty answers false.
/// Numbers do not depend on the locale: "." always separates decimals, a single "," does so too, and nothing groups
/// digits. A character that no value of the mode can hold is refused while it is typed. A text that a validator does
/// not accept goes back, with a reason, when the edit is ended: no editingFinished comes then.
class SHELLSERVICESMODULE_API QPropertyLineEdit : public CustomLineEdit
{
    Q_OBJECT
public:
    /// What the text stands for, and so what may be typed.
    enum TextMode {
        TEXT_STRING = 0,
        TEXT_FLOAT = 1,
        TEXT_DECIMAL = 2,
        TEXT_HEX = 3, ///< with or without "0x"; all 64 bits
        TEXT_IPV4 = 4,
        TEXT_MASK = 5, ///< IPv4 subnet mask: ones, then zeros
        TEXT_MAC = 6 ///< six bytes, with ":", "-" or nothing between them
    };

    explicit QPropertyLineEdit(int style, QWidget *parent = nullptr);
    ~QPropertyLineEdit() override;

    /// The device's value as text, and its mode (TextMode; any other number is TEXT_STRING).
    void SetText(const QString &text, int mode);
    /// Range of a number, in the value's unit, both ends inside; the maximum stands first. An end of type float is
    /// compared in float, the precision in which it came. A maximum below the minimum is no range. SetText takes a
    /// range away when the mode changes.
    void SetRange(const QVariant &maximum, const QVariant &minimum);
    /// Longest text in bytes of UTF-8; 0 and below: no limit.
    void SetStringLength(int length);
    /// Whether the text differs from the last one of the device, or the one that was saved since.
    bool IsChanged() const;
    /// Puts the typed value into `value` (QString, float as double, integers, addresses in host byte order as qint64).
    /// False when the text was not modified, is no value of its mode, out of range or too long; the reason then shows
    /// at the edit (not for an unmodified text), and `value` stays. A text that was saved counts as unmodified.
    bool SaveProperty(QVariant &value);
    /// Back to the last text from the device, or to the text that was saved since.
    void Rollback();

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isTyping() const;
    void refuse(const QString &reason);
    void refuseByValidator();
    void clearRefusal();

    class Private;
    std::unique_ptr<Private> d;
};
