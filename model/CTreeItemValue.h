#pragma once

#include "model/FeatureTreeModuleGlobal.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <memory>

/// What is known of one node of the device description: its names in both languages, its texts, and in the derived
/// classes the last value read from the device. It does no device traffic and tells nobody; the item that owns it
/// guards it with its update lock.
class FEATURETREEMODULE_API CTreeItemValue
{
public:
    CTreeItemValue();
    /// Takes over the names and the English texts; everything else is as new.
    CTreeItemValue(const CTreeItemValue &other);
    /// Takes over every field.
    CTreeItemValue &operator=(const CTreeItemValue &other);

    virtual ~CTreeItemValue();
    /// Text that the tree shows for the value.
    virtual QString displayValue() const;
    /// GenICam feature name. Only rows of two nodes look at the column.
    virtual QString nodeName(int nColumn) const;
    /// Rich text in English, by column as nodeName.
    virtual QString toolTip(int nColumn) const;
    /// The value as the editors exchange it; invalid where the class has none.
    virtual QVariant value() const;
    /// Stores what value() gives, without clamping; does nothing where the class has no value.
    virtual void setValue(const QVariant &value);
    /// Display name in English.
    virtual QString displayName() const;
    /// Display name in Chinese, else displayName().
    virtual QString translateName() const;
    /// Name on a guided page in English: that of the page description, else the display name.
    virtual QString StepPagesDisplayName() const;
    /// Name on a guided page in Chinese: the title for m_nStepIndex, else that of the page description, else the
    /// English one.
    virtual QString StepPagesTranslateName() const;
    /// Fingerprint of the state that an editor shows: it differs exactly when the editor would.
    virtual QString createCurrentStauts(bool bReadOnly);
    /// Takes the value over from another object of the same class; the names too when `bCopyBase`.
    virtual void copy(CTreeItemValue *pSource, bool bCopyBase);

    /// Stores the fingerprint as taken over by the editor.
    void updateEditorInfo(bool bReadOnly);

    /// The class that belongs to the tag of a description element or a custom tag; null without memory.
    static std::unique_ptr<CTreeItemValue> create(const QString &strTagName);

    bool m_bApplyEditorFont = true; ///< a new editor gets the global font family
    int m_nStepIndex = 0; ///< key into m_stepPageNames for the current page
    QMap<int, QString> m_stepPageNames; ///< page title of this node by page index
    QString m_strStepDisplayNameEn; ///< "DisplayName_En" of the page description
    QString m_strStepDisplayNameCn; ///< "DisplayName_Cn" of the page description
    QString m_strNodeName; ///< GenICam feature name, the key of the whole model
    QString m_strDescription; ///< element Description
    QString m_strDescriptionTrans; ///< the description from the camera translator
    QString m_strDisplayName; ///< element DisplayName; the node name until the first read
    QString m_strTranslateName; ///< display name from the camera translator
    QString m_strToolTip; ///< rich text for "ENG"
    QString m_strToolTipCn; ///< rich text for "CH"
    QString m_strCurrentStatus; ///< fingerprint that the editor last took over
};
