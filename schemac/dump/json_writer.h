#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Schemac {

/// Writes indented JSON. An object or array with nothing in it takes one line.
class JsonWriter {
public:
    void BeginObject() { Begin('{'); }

    void EndObject() { End('}'); }

    void BeginArray() { Begin('['); }

    void EndArray() { End(']'); }

    void Key(std::string_view name);
    void String(std::string_view text);
    void Bool(bool value);
    void Number(int value);
    void Null();

    /// The document so far, with a line break at its end.
    std::string Take();

private:
    void Begin(char bracket);
    void End(char bracket);
    void BeforeValue();
    void NewLine();
    void Quoted(std::string_view text);

    std::string m_text;
    std::vector<bool> m_hasValues; ///< for every open bracket
    bool m_afterKey = false;
};

} // namespace Schemac
