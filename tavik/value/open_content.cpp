#include "tavik/value/open_content.h"

#include "pellum/error/exception.h"
#include "tavik/value/json_text.h"
#include "tavik/value/open_writer.h"

#include <limits>
#include <stdexcept>
#include <utility>

namespace Tavik {

namespace {

bool IsWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '$'
        || c == '-';
}

} // namespace

void AppendMemberName(std::string& path, std::string_view name) {
    bool isWord = !name.empty();
    for (const char c : name) {
        isWord = isWord && IsWordCharacter(c);
    }
    if (isWord) {
        path += name;
    } else {
        AppendQuoted(path, name);
    }
}

// ---- OpenValue ----

OpenKind OpenValue::GetKind() const {
    using TokenKind = OpenContent::TokenKind;
    switch (m_content->m_tokens[m_token].kind) {
    case TokenKind::False:
    case TokenKind::True: return OpenKind::Boolean;
    case TokenKind::Number: return OpenKind::Number;
    case TokenKind::String: return OpenKind::String;
    case TokenKind::BeginArray: return OpenKind::Array;
    case TokenKind::BeginObject: return OpenKind::Object;
    default: return OpenKind::Null;
    }
}

std::string_view OpenValue::GetText() const {
    using TokenKind = OpenContent::TokenKind;
    const OpenContent::Token& token = m_content->m_tokens[m_token];
    switch (token.kind) {
    case TokenKind::Null: return "null";
    case TokenKind::False: return "false";
    case TokenKind::True: return "true";
    case TokenKind::Number:
    case TokenKind::String: return m_content->GetText(token);
    default: return {};
    }
}

std::size_t OpenValue::GetEnd() const {
    return IsContainer() ? m_content->m_tokens[m_token].position + std::size_t{1} : m_token + 1;
}

OpenItems OpenValue::GetItems() const {
    return IsContainer() ? OpenItems(m_content, m_token + 1, GetEnd() - 1) : OpenItems(m_content, 0, 0);
}

std::size_t OpenValue::GetCount() const {
    return IsContainer() ? m_content->m_tokens[m_token].size : 0;
}

bool OpenValue::HoldsOnlyScalars() const {
    // A scalar is one token, anything else more.
    return GetKind() == OpenKind::Array && GetEnd() - m_token - 2 == GetCount();
}

std::optional<OpenValue> OpenValue::Find(std::string_view name) const {
    if (GetKind() == OpenKind::Object) {
        for (const OpenItem item : GetItems()) {
            if (item.name == name) {
                return item.value;
            }
        }
    }
    return {};
}

// ---- OpenItems ----

std::size_t OpenItems::Iterator::GetValueToken() const {
    return m_token + (m_content->m_tokens[m_token].kind == OpenContent::TokenKind::Name ? 1 : 0);
}

OpenItem OpenItems::Iterator::operator*() const {
    const std::size_t value = GetValueToken();
    return {
        value == m_token ? std::string_view() : m_content->GetText(m_content->m_tokens[m_token]),
        OpenValue(m_content, value)};
}

OpenItems::Iterator& OpenItems::Iterator::operator++() {
    m_token = OpenValue(m_content, GetValueToken()).GetEnd();
    return *this;
}

OpenItems::Iterator OpenItems::Iterator::operator++(int) {
    const Iterator before = *this;
    ++*this;
    return before;
}

// ---- OpenContent ----

std::string_view OpenContent::GetText(const Token& token) const {
    return std::string_view(m_text).substr(token.position, token.size);
}

void OpenContent::Append(TokenKind kind, std::string_view text) {
    constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max();
    if (text.size() > kMost - m_text.size() || m_tokens.size() == kMost) {
        throw std::length_error("open content cannot hold more than 4 GiB");
    }
    const auto position = static_cast<std::uint32_t>(m_text.size());
    m_text += text;
    m_tokens.push_back({kind, position, static_cast<std::uint32_t>(text.size())});
}

std::optional<OpenValue> OpenContent::Find(std::string_view name) const {
    for (const OpenItem item : *this) {
        if (item.name == name) {
            return item.value;
        }
    }
    return {};
}

void OpenContent::AppendItem(const OpenContent& source, std::size_t token, std::size_t end) {
    for (std::size_t i = token; i < end; ++i) {
        const Token& copied = source.m_tokens[i];
        if (copied.kind < TokenKind::BeginArray) {
            Append(copied.kind, source.GetText(copied));
            continue;
        }
        const std::size_t target = m_tokens.size();
        m_tokens.push_back(copied);
        if (copied.kind == TokenKind::BeginArray || copied.kind == TokenKind::BeginObject) {
            m_tokens.back().position = static_cast<std::uint32_t>(target + (copied.position - i));
        }
    }
}

template <class AppendValue>
void OpenContent::Set(std::string_view name, AppendValue appendValue) {
    OpenContent changed;
    bool isPlaced = false;
    const auto appendNamed = [&] {
        changed.Append(TokenKind::Name, name);
        appendValue(changed);
        isPlaced = true;
    };
    std::size_t token = 0;
    while (token < m_tokens.size()) {
        const std::size_t end = OpenValue(this, token + 1).GetEnd();
        if (GetText(m_tokens[token]) == name) {
            appendNamed();
        } else {
            changed.AppendItem(*this, token, end);
        }
        token = end;
    }
    if (!isPlaced) {
        appendNamed();
    }
    *this = std::move(changed);
}

void OpenContent::SetText(std::string_view name, std::string_view text) {
    Set(name, [text](OpenContent& content) { content.Append(TokenKind::String, text); });
}

void OpenContent::SetNumber(std::string_view name, std::string_view literal) {
    if (!IsNumberLiteral(literal)) {
        throw Pellum::Exception("the text given as a number is none");
    }
    Set(name, [literal](OpenContent& content) { content.Append(TokenKind::Number, literal); });
}

void OpenContent::SetNumber(std::string_view name, std::int64_t number) {
    SetNumber(name, std::to_string(number));
}

void OpenContent::SetBoolean(std::string_view name, bool value) {
    Set(name, [value](OpenContent& content) { content.Append(value ? TokenKind::True : TokenKind::False); });
}

void OpenContent::SetNull(std::string_view name) {
    Set(name, [](OpenContent& content) { content.Append(TokenKind::Null); });
}

bool OpenContent::Remove(std::string_view name) {
    OpenContent remaining;
    bool wasThere = false;
    std::size_t token = 0;
    while (token < m_tokens.size()) {
        const std::size_t end = OpenValue(this, token + 1).GetEnd();
        if (GetText(m_tokens[token]) == name) {
            wasThere = true;
        } else {
            remaining.AppendItem(*this, token, end);
        }
        token = end;
    }
    if (wasThere) {
        *this = std::move(remaining);
    }
    return wasThere;
}

void OpenContent::Clear() {
    m_tokens.clear();
    m_text.clear();
}

} // namespace Tavik
