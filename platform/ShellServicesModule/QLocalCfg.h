#pragma once

#include "ShellServicesModule/ShellServicesModuleGlobal.h"

#include <QString>

/// The application's configuration, kept between runs. Getters and SetUserLevel: any thread.
class SHELLSERVICESMODULE_API QLocalCfg
{
public:
    static QLocalCfg *Instance();

    /// 0 guru, 1 expert, 2 beginner (GenICam Visibility). Values outside 0 to 2 are stored as 2.
    int GetUserLevel();
    void SetUserLevel(int level);
    /// Language of node texts: "ENG" or "CH".
    QString GetPropertyLan();
    /// Name of the text codec for local strings; may be empty.
    QString GetCodeFormat();

    /// Stores `m_strPropertyLan` as the language of node texts. Assigning the public field takes effect at once;
    /// its type guards the text for readers on other threads.
    class SHELLSERVICESMODULE_API LanguageField
    {
    public:
        LanguageField();
        ~LanguageField();
        /// "CH"; any other text stands for "ENG".
        LanguageField &operator=(const QString &language);
        operator QString() const;

    private:
        Q_DISABLE_COPY(LanguageField)
    };
    LanguageField m_strPropertyLan;

private:
    QLocalCfg();
    ~QLocalCfg();
    Q_DISABLE_COPY(QLocalCfg)
};
