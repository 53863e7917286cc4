#include "files/FileErrors.h"

#include "format/MakeUString.h"
#include "text/LocalText.h"
#include "text/Numerals.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <typeinfo>

struct FileIOError::Block {
    int code = 0;
    CopiedUString<UTF8> firstPath;
    CopiedUString<UTF8> secondPath;
    CopiedUString<UTF8> message;
    std::string narrowMessage;
};

namespace {

// The system's text for an error number; empty when it is no text of the local encoding.
AutoUString<UTF8> SystemErrorText(unsigned int code) {
    char buffer[256];
    char const* const text = strerror_r(static_cast<int>(code), buffer, sizeof(buffer));
    try {
        return UnixPlatform::ToUTF8(MakeLocalRef(text));
    } catch (...) {
        return AutoUString<UTF8>();
    }
}

} // namespace

FileIOError::FileIOError(int code) : m_block(std::make_unique<Block>()) {
    m_block->code = code;
}

FileIOError::FileIOError(FileLocation const& location, int code) : FileIOError(code) {
    m_block->firstPath = location.GetDisplayPath();
}

FileIOError::FileIOError(FileLocation const& first, FileLocation const& second, int code)
    : FileIOError(first, code) {
    m_block->secondPath = second.GetDisplayPath();
}

FileIOError::FileIOError(FileIOError const& other)
    : DebuggableException(other), m_block(std::make_unique<Block>(*other.m_block)) {
}

FileIOError& FileIOError::operator=(FileIOError const& other) {
    m_block = std::make_unique<Block>(*other.m_block);
    return *this;
}

FileIOError::~FileIOError() = default;

int FileIOError::GetCode() const {
    return m_block->code;
}

void FileIOError::MakeErrorMessage() const {
    UStringRef<UTF8> const name = MakeUTF8Ref(typeid(*this).name());
    CopiedUString<UTF8> sentence = MakeUString(UFormat("File error \"{e}\"") % name);
    if (!m_block->firstPath.empty())
        sentence = MakeUString(UFormat("{s} on \"{p}\"") % sentence % m_block->firstPath);
    if (!m_block->secondPath.empty())
        sentence = MakeUString(UFormat("{s} and \"{p}\"") % sentence % m_block->secondPath);
    if (m_block->code != 0) {
        AutoUString<UTF8> const reason = MakeErrorString(static_cast<unsigned int>(m_block->code));
        sentence = MakeUString(UFormat("{s} : \"{e}\"") % sentence % reason);
    }
    AutoUString<Local8Bit> const narrow = UnixPlatform::ToLocal8Bit(sentence.Ref());
    m_block->narrowMessage.assign(narrow.begin(), narrow.end());
    m_block->message = std::move(sentence);
}

char const* FileIOError::what() const noexcept {
    try {
        MakeErrorMessage();
        return m_block->narrowMessage.c_str();
    } catch (...) {
        return DebuggableException::what();
    }
}

UStringRef<UTF8> FileIOError::uwhat() const noexcept {
    try {
        MakeErrorMessage();
        return m_block->message.Ref();
    } catch (...) {
        return DebuggableException::uwhat();
    }
}

BinaryManipulationNotSupported::BinaryManipulationNotSupported()
    : ExceptionPL("Operation not supported for Binary data."_utf8) {
}

void ThrowFileError(FileLocation const& location, int code) {
    switch (code) {
    case 0: return;
    case EPERM:
    case EACCES: throw FilePermissionError(location, code);
    case ENOENT: throw FileNotFoundError(location, code);
    case EAGAIN: throw FileLockError(location, code);
    case ENOMEM:
    case ENFILE:
    case EMFILE: throw FileResourceError(location, code);
    case ENOTDIR:
    case ENAMETOOLONG: throw DirectoryNotFoundError(location, code);
    default: throw FileIOError(location, code);
    }
}

AutoUString<UTF8> MakeErrorString(unsigned int code) {
    NumeralText const numeral = MakeAsciiDecimalNumeral(code, 1);
    AutoUString<UTF8> text = SystemErrorText(code);
    if (text.empty()) text = MakeUString(UFormat("Unknown"));
    return MakeUString(UFormat("Error 0x{e}%: {s}") % numeral.Ref() % text);
}
