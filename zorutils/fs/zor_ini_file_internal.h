// zorutils/fs/zor_ini_file_internal.h: the lines of settings files, read and written.
#pragma once

#include <memory>

#include "zorutils/fs/mapped_file_internal.h"
#include "zorutils/fs/platform_file.h"
#include "zorutils/fs/zor_ini_file.h"

namespace zor_settings {

// Where lines come from.
class IZorIniFileReaderImpl
{
public:
    virtual bool isEof() = 0;
    // The next line that is not empty; empty at the end.
    virtual String readLine() = 0;
    virtual ~IZorIniFileReaderImpl() = default;
};

// Lines of memory that somebody else owns; `count` in units of T. A zero unit is the end.
template <class T>
class TZorIniFileReaderImpl : public IZorIniFileReaderImpl
{
public:
    TZorIniFileReaderImpl(const T* text, unsigned int count) : m_pos(text), m_left(count) {}

    bool isEof() override;
    String readLine() override;

private:
    void skipLineEnds();

    const T* m_pos;
    unsigned int m_left;
    String m_line;
};

// Where lines go.
class IZorIniFileWriterImpl
{
public:
    virtual mandatory_error::ZorErrorCode<bool> open(const WCHAR* path) = 0;
    virtual mandatory_error::ZorErrorCode<bool> write(const String& text) = 0;
    virtual mandatory_error::ZorErrorCode<bool> writeLine(const String& text) = 0;
    virtual ~IZorIniFileWriterImpl() = default;
};

template <class T>
class TZorIniFileWriterImpl : public IZorIniFileWriterImpl
{
public:
    TZorIniFileWriterImpl();
    ~TZorIniFileWriterImpl() override;
    TZorIniFileWriterImpl(const TZorIniFileWriterImpl&) = delete;
    TZorIniFileWriterImpl& operator=(const TZorIniFileWriterImpl&) = delete;

    mandatory_error::ZorErrorCode<bool> open(const WCHAR* path) override;
    mandatory_error::ZorErrorCode<bool> write(const String& text) override;
    mandatory_error::ZorErrorCode<bool> writeLine(const String& text) override;

private:
    bool writeScratch();

    base::PlatformFile m_file;
    zor_text::CZorStringT<T> m_eol;
    zor_text::CZorStringT<T> m_scratch;
};

// A file's lines in its encoding.
class CIniFileReader
{
public:
    bool open(const WCHAR* path);
    IZorIniFileReaderImpl& lines() { return *m_lines; }
    zor::text_utils::EZorTextEncoding encoding() const { return m_encoding; }

private:
    CMappedFile m_file;
    std::unique_ptr<IZorIniFileReaderImpl> m_lines;
    zor::text_utils::EZorTextEncoding m_encoding = zor::text_utils::TEXT_ENCODING_UNKNOWN;
};

class CIniFileWriter
{
public:
    explicit CIniFileWriter(zor::text_utils::EZorTextEncoding encoding);

    // False after the first write that fails; what was written stays.
    bool write(const WCHAR* path, const CThreeTupleStore& store);

private:
    bool writeSection(const SettingsSection& section);

    std::unique_ptr<IZorIniFileWriterImpl> m_lines;
};

// Reads lines into the store, in place of what it held.
bool parseSettings(IZorIniFileReaderImpl& lines, CThreeTupleStore& store);

} // namespace zor_settings
