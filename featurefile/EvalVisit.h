#pragma once

#include "featurefile/EvalContext.h"

/// One node of a description looked at, as deep as it stands.
class EvalContext::Visit
{
public:
    explicit Visit(EvalContext *context)
        : m_pContext(context)
    {
        m_bAllowed = m_pContext->countVisit();
        if (++m_pContext->m_nDepth > m_pContext->m_limits.depth && m_bAllowed) {
            m_bAllowed = m_pContext->fail(QStringLiteral("%1 refers to nodes deeper than %2")
                                              .arg(m_pContext->m_strFeature)
                                              .arg(m_pContext->m_limits.depth));
        }
    }
    ~Visit() { --m_pContext->m_nDepth; }
    Q_DISABLE_COPY(Visit)

    bool isAllowed() const { return m_bAllowed; }

private:
    EvalContext *m_pContext;
    bool m_bAllowed = false;
};
