#include "schemac/dump/json_writer.h"

#include <utility>

namespace Schemac {

void JsonWriter::Key(std::string_view name) {
    BeforeValue();
    Quoted(name);
    m_text += ": ";
    m_afterKey = true;
}

void JsonWriter::String(std::string_view text) {
    BeforeValue();
    Quoted(text);
}

void JsonWriter::Number(int value) {
    BeforeValue();
    m_text += std::to_string(value);
}

void JsonWriter::Bool(bool value) {
    BeforeValue();
    m_text += value ? "true" : "false";
}

void JsonWriter::Null() {
    BeforeValue();
    m_text += "null";
}

std::string JsonWriter::Take() {
    m_text += '\n';
    return std::exchange(m_text, {});
}

void JsonWriter::Begin(char bracket) {
    BeforeValue();
    m_text += bracket;
    m_hasValues.push_back(false);
}

void JsonWriter::End(char bracket) {
    const bool hadValues = m_hasValues.back();
    m_hasValues.pop_back();
    if (hadValues) {
        NewLine();
    }
    m_text += bracket;
}

void JsonWriter::BeforeValue() {
    if (std::exchange(m_afterKey, false) || m_hasValues.empty()) {
        return;
    }
    if (m_hasValues.back()) {
        m_text += ',';
    }
    m_hasValues.back() = true;
    NewLine();
}

void JsonWriter::NewLine() {
    m_text += '\n';
    m_text.append(m_hasValues.size() * 2, ' ');
}

void JsonWriter::Quoted(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    m_text += '"';
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            m_text += '\\';
            m_text += c;
        } else if (c == '\n') {
            m_text += "\\n";
        } else if (byte < 0x20) {
            m_text += "\\u00";
            m_text += kDigits[byte >> 4U];
            m_text += kDigits[byte & 0xFU];
        } else {
            m_text += c;
        }
    }
    m_text += '"';
}

} // namespace Schemac
