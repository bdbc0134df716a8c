#pragma once

#include "tools/morvane/terminal/output.h"
#include "tools/morvane/terminal/table.h"

#include <cstddef>
#include <string>

namespace Tool {

/// Lays out what is told of one thing: titles, facts, paragraphs, tables.
class Page {
public:
    static constexpr std::size_t kIndent = 2;

    /// `output` is borrowed.
    explicit Page(Output& output) : m_output(output) {}

    Output& GetOutput() const { return m_output; }

    void Title(const std::string& text) { m_output.WriteLine(m_output.Paint(Style::Heading, text)); }

    /// A title with an empty line before it.
    void Heading(const std::string& title);
    void Paragraph(const std::string& text, std::size_t indent = kIndent);
    /// A name and what is to be said to it; nothing for an empty text.
    void Fact(const std::string& name, const std::string& text, std::size_t indent = kIndent);
    /// A table under a heading; nothing for an empty one.
    void Section(const std::string& title, const Table& table);

private:
    Output& m_output;
};

} // namespace Tool
