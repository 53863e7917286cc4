#include "text/UStringBody.h"
#include "text/EditableUString.h"
#include "text/SharedUString.h"

template class UStringBody<UTF8>;
template class UStringBody<UTF16>;
template class UStringBody<UTF32>;
template class UStringBody<Local8Bit>;
template class UStringBody<Binary8Bit>;
template class UStringBody<IANANamedTextEncoding>;

template class EditableUString<UTF8>;
template class EditableUString<UTF16>;
template class EditableUString<UTF32>;
template class EditableUString<Local8Bit>;
template class EditableUString<Binary8Bit>;
template class EditableUString<IANANamedTextEncoding>;

template class SharedUString<UTF8>;
template class SharedUString<UTF16>;
template class SharedUString<UTF32>;
