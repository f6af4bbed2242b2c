#pragma once

#include "ControlKit/CustomObject.h"

#include <QVariant>

/// User data and language of a widget, beside its style attributes. GUI thread.
class CONTROLKIT_API CustomQssHelper : public CustomObject
{
public:
    explicit CustomQssHelper(QWidget *owner);
    ~CustomQssHelper() override;

    void cSetUserData(const QVariant &data);
    QVariant cUserData() const;
    /// Tells the helper that the client's language changed; widgets call it from changeEvent.
    virtual void cLanguageChange();
    /// The client's language at the last change, "ENG" or "CH".
    QString cLanguageString() const;

private:
    QVariant m_userData;
    QString m_strLanguage;
};
