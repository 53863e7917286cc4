#include "format/FormatOverrideScope.h"

FormatOverrideScope::FormatOverrideScope(FormatOverrideSet const& set, FormatOverrideContext& context)
    : m_link(set), m_context(&context) {
    m_context->AddLanguage(m_link);
}

FormatOverrideScope::~FormatOverrideScope() {
    m_context->RemoveLanguage(m_link);
}
