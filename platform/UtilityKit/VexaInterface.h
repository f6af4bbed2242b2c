#pragma once

#include <QString>
#include <QtGlobal>

class QWidget;

#ifdef UTILITYKIT_BUILD
#define UTILITYKIT_API Q_DECL_EXPORT
#else
#define UTILITYKIT_API Q_DECL_IMPORT
#endif

/// Free functions of the client. None throws. Those that take a widget run on the GUI thread; all others may
/// be called on any thread and are independent of the process's locale.
namespace VexaInterface {

/// Evaluates a GenICam formula (SwissKnife, Converter) in the local 8-bit encoding. On failure `ok` is false,
/// the result is 0 and GetCalculatorErro tells why. Of `?:`, `&&` and `||` only the side that counts is worked out; a
/// result that is not finite, and an integer that a double cannot hold, are failures.
UTILITYKIT_API double Compute(const char *formula, bool &ok);
/// Text of the last failure of Compute on the calling thread; empty after a success. Never null.
UTILITYKIT_API const char *GetCalculatorErro();
/// Parses a hexadecimal ("0x" prefix) or plain decimal integer, with a sign and blanks around it allowed.
/// Unsigned 64-bit numbers keep their bits. Text that is no number gives 0.
UTILITYKIT_API qint64 string2Int(const QString &text);

/// "0x" and upper-case hexadecimal digits, a negative number as its 64-bit pattern.
UTILITYKIT_API QString Int2HexNumberQString(qint64 number);
/// Dotted text of an IPv4 address or mask in host byte order.
UTILITYKIT_API QString numIP2StrIP(int address);
/// Six upper-case hexadecimal bytes with ":" between them, from the low 48 bits.
UTILITYKIT_API QString int64_2StringMacAddress(quint64 address);

/// Version of the client's software, as feature files carry it.
UTILITYKIT_API QString softwareVersion();
/// Folder of the client's data, without a slash at the end; made on first use.
UTILITYKIT_API QString programDataPath();
/// Language of the client, "ENG" or "CH". `reload` reads it anew from the configuration first.
UTILITYKIT_API QString language(bool reload);
/// True for a build without a brand of its own.
UTILITYKIT_API bool isNeutralVision();
/// Whether the disk that holds `path` has fewer than `bytesNeeded` bytes left. A non-null `ok` tells whether the
/// disk could be asked; when it could not the answer is false.
UTILITYKIT_API bool IsDiskFull(const QString &path, qint64 bytesNeeded, bool *ok);

/// File dialogs of the client; modal, GUI thread. The empty string when the user gave up. A name to save under that
/// has no suffix gets that of a filter for one kind of file.
UTILITYKIT_API QString getOpenFileName(QWidget *parent, const QString &title,
                                       const QString &directory, const QString &filter);
UTILITYKIT_API QString getSaveFileName(QWidget *parent, const QString &title,
                                       const QString &directory, const QString &filter);

} // namespace VexaInterface
