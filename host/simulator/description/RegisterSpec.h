#pragma once

#include <QByteArray>
#include <QVector>

/// How one value lies in the memory of a built-in device, and which GenICam register node reaches it. Written by
/// chaining: Int(2, -40).littleEndian().signedValue().readOnly().
struct RegisterSpec
{
    enum class Kind { Integer, Masked, Float, Text };
    static constexpr quint64 kNextFree =
        ~quint64(0); ///< behind the register that the category had last

    Kind m_eKind = Kind::Integer;
    quint32 m_nLength = 4; ///< bytes of one element
    QVector<qint64> m_values{0}; ///< initial values of the elements; the last one repeats
    QVector<double> m_numbers{0.0}; ///< the same for Kind::Float
    QByteArray m_text; ///< initial content for Kind::Text
    quint64 m_nAddress = kNextFree;
    quint32 m_nCount = 1; ///< elements that lie one behind the other
    QByteArray m_strIndex; ///< integer node for pIndex, its step is the element length
    QByteArray m_strOffset; ///< integer node for pAddress, added to the address
    QByteArray m_strWord; ///< register whose bytes this one shares, empty for bytes of its own
    int m_nShift =
        0; ///< Kind::Masked: position of the lowest bit, counted from the least significant
    int m_nWidth = 0; ///< Kind::Masked: bits
    QByteArray m_strAccess = "RW";
    QByteArray m_strCachable;
    int m_nPollingTime = -1; ///< milliseconds, -1 for none
    QVector<QByteArray> m_invalidators;
    bool m_bLittleEndian = false;
    bool m_bSigned = false;
    bool m_bStored = true; ///< belongs to the user sets

    RegisterSpec &at(quint64 address);
    /// Another view of the bytes of a register that has a row already; with at() of a part of them, whose content is
    /// the row's.
    RegisterSpec &within(const char *word);
    RegisterSpec &readOnly();
    RegisterSpec &writeOnly();
    /// A setting that user sets leave alone.
    RegisterSpec &transient();
    RegisterSpec &littleEndian();
    RegisterSpec &signedValue();
    /// The device changes the value by itself: Cachable is NoCache.
    RegisterSpec &moving(int pollingTime = -1);
    RegisterSpec &cachable(const char *mode);
    RegisterSpec &invalidatedBy(const char *node);
    RegisterSpec &indexedBy(const char *node, quint32 count);
    RegisterSpec &offsetBy(const char *node, quint32 count);
    RegisterSpec &values(const QVector<qint64> &initial);
    RegisterSpec &numbers(const QVector<double> &initial);

    bool isWritable() const { return m_strAccess != "RO"; }
    /// The bytes that the register holds when the device leaves the factory, all elements.
    QByteArray initialBytes() const;
    /// LSB and MSB as the description has to name them: bits count from the other end in big-endian registers.
    int describedLsb() const;
    int describedMsb() const;
};

RegisterSpec Int(quint32 length, qint64 initial);
/// A field of a 4-byte word that other fields may share.
RegisterSpec Bits(const char *word, int shift, int width, qint64 initial);
RegisterSpec Real(quint32 length, double initial);
RegisterSpec Text(quint32 length, const QByteArray &initial);
/// Write-only register of a command.
RegisterSpec Trigger();

/// `value` as `length` bytes.
QByteArray encodedInteger(quint64 value, quint32 length, bool littleEndian);
quint64 decodedInteger(const QByteArray &bytes, bool littleEndian);
