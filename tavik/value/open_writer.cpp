#include "tavik/value/open_writer.h"

#include "pellum/error/exception.h"
#include "tavik/value/json_text.h"

#include <algorithm>

namespace Tavik {

namespace {

constexpr std::size_t kNoToken = static_cast<std::size_t>(-1);

[[noreturn]] void Misplaced(const char* what) {
    throw Pellum::Exception(std::string("open content: ") + what);
}

} // namespace

bool OpenContentWriter::NameLess::operator()(std::uint32_t a, std::uint32_t b) const {
    return content->GetText(content->m_tokens[a]) < content->GetText(content->m_tokens[b]);
}

bool OpenContentWriter::NameLess::operator()(std::uint32_t a, std::string_view b) const {
    return content->GetText(content->m_tokens[a]) < b;
}

bool OpenContentWriter::NameLess::operator()(std::string_view a, std::uint32_t b) const {
    return a < content->GetText(content->m_tokens[b]);
}

OpenContentWriter::OpenContentWriter(OpenContent& content)
    : m_content(content), m_complete(content.m_tokens.size()), m_completeText(content.m_text.size()) {
    Level& level = m_levels.emplace_back(Level{
        .isArray = false, .begin = kNoToken, .names = std::set<std::uint32_t, NameLess>(NameLess{&content})});
    std::uint32_t token = 0;
    while (token < content.m_tokens.size()) {
        level.names.insert(token);
        token = static_cast<std::uint32_t>(OpenValue(&content, token + std::size_t{1}).GetEnd());
    }
}

OpenContentWriter::~OpenContentWriter() {
    // Never more than there is: the content may have been cleared meanwhile.
    m_content.m_tokens.resize(std::min(m_complete, m_content.m_tokens.size()));
    m_content.m_text.resize(std::min(m_completeText, m_content.m_text.size()));
}

bool OpenContentWriter::Name(std::string_view name) {
    Level& level = m_levels.back();
    if (level.isArray || level.hasName) {
        Misplaced(level.isArray ? "an element of an array has no name" : "a name without a value");
    }
    if (level.names.contains(name)) {
        return false;
    }
    level.name = static_cast<std::uint32_t>(m_content.m_tokens.size());
    m_content.Append(OpenContent::TokenKind::Name, name);
    level.hasName = true; // before anything can throw: what has a name and no value is dropped
    level.names.insert(level.name);
    return true;
}

void OpenContentWriter::ExpectValue() const {
    const Level& level = m_levels.back();
    if (!level.isArray && !level.hasName) {
        Misplaced("a value without a name");
    }
}

void OpenContentWriter::Begin(bool isArray) {
    ExpectValue();
    Level level{
        .isArray = isArray,
        .begin = m_content.m_tokens.size(),
        .names = std::set<std::uint32_t, NameLess>(NameLess{&m_content})};
    m_levels.push_back(std::move(level));
    m_content.Append(isArray ? OpenContent::TokenKind::BeginArray : OpenContent::TokenKind::BeginObject);
}

void OpenContentWriter::End(bool isArray) {
    const Level& level = m_levels.back();
    if (level.begin == kNoToken || level.isArray != isArray || level.hasName) {
        Misplaced("an end that nothing was begun for, or a name without a value");
    }
    OpenContent::Token& begin = m_content.m_tokens[level.begin];
    begin.position = static_cast<std::uint32_t>(m_content.m_tokens.size());
    begin.size = level.count;
    m_content.m_tokens.push_back(
        {isArray ? OpenContent::TokenKind::EndArray : OpenContent::TokenKind::EndObject, 0, 0});
    m_levels.pop_back();
    EndValue();
}

void OpenContentWriter::EndValue() {
    Level& level = m_levels.back();
    ++level.count;
    level.hasName = false;
    if (m_levels.size() == 1) {
        m_complete = m_content.m_tokens.size();
        m_completeText = m_content.m_text.size();
    }
}

void OpenContentWriter::Scalar(OpenContent::TokenKind kind, std::string_view text) {
    ExpectValue();
    m_content.Append(kind, text);
    EndValue();
}

void OpenContentWriter::BeginObject() {
    Begin(false);
}

void OpenContentWriter::EndObject() {
    End(false);
}

void OpenContentWriter::BeginArray() {
    Begin(true);
}

void OpenContentWriter::EndArray() {
    End(true);
}

void OpenContentWriter::String(std::string_view text) {
    Scalar(OpenContent::TokenKind::String, text);
}

void OpenContentWriter::Number(std::string_view literal) {
    if (!IsNumberLiteral(literal)) {
        Misplaced("the text given as a number is none");
    }
    Scalar(OpenContent::TokenKind::Number, literal);
}

void OpenContentWriter::Boolean(bool value) {
    Scalar(value ? OpenContent::TokenKind::True : OpenContent::TokenKind::False);
}

void OpenContentWriter::Null() {
    Scalar(OpenContent::TokenKind::Null);
}

std::string OpenContentWriter::GetPath() const {
    std::string path;
    for (const Level& level : m_levels) {
        if (level.isArray) {
            path += '[' + std::to_string(level.count) + ']';
        } else if (level.hasName) {
            path += path.empty() ? "" : ".";
            AppendMemberName(path, m_content.GetText(m_content.m_tokens[level.name]));
        }
    }
    return path;
}

} // namespace Tavik
