#pragma once

#include <QDialog>
#include <QVector>

#include <functional>

class CustomLabel;
class CustomPushButton;
class QListWidget;
class QPlainTextEdit;
class QTableWidget;

/// A text of limited length, with the tags that it may hold and a table of the ASCII characters: a double click or
/// Enter on either puts it in at the cursor. A text of bytes is hexadecimal, "02 53".
class FormatEditDialog : public QDialog
{
    Q_OBJECT
public:
    struct Tag
    {
        QString strShown;
        QString strText; ///< what it puts in
    };
    struct Content
    {
        QString strTitle;
        QString strText;
        int nMaxBytes = 0; ///< in UTF-8
        bool bBytes = false;
        QVector<Tag> tags;
        std::function<QString(const QString &)>
            objection; ///< why a text cannot be, empty when it can
    };
    explicit FormatEditDialog(const Content &content, QWidget *pParent = nullptr);

    QString text() const;

private:
    void fillTags(const QVector<Tag> &tags);
    void fillCharacters();
    void putIn(const QString &strText);
    void check();

    const int m_nMaxBytes;
    const bool m_bBytes;
    const std::function<QString(const QString &)> m_objection;
    QPlainTextEdit *m_pText;
    CustomLabel *m_pCounter;
    QListWidget *m_pTags;
    QTableWidget *m_pCharacters;
    CustomPushButton *m_pOk;
};
