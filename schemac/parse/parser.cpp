#include "schemac/parse/parser.h"

#include "schemac/diagnostic/catalogue.h"
#include "schemac/parse/lexer.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace Schemac {

namespace {

using Syntax::MethodDecl;
using Syntax::Name;
using Syntax::NamespaceBlock;
using Syntax::PropertyDecl;
using Syntax::QualifiedName;
using Syntax::TypeDecl;
using Syntax::TypeDeclKind;
using Syntax::VersionDecl;

/// Thrown after a syntax error is reported, caught where the parser can go on: at the next declaration.
struct SyntaxError {};

struct TypeKeyword {
    std::string_view keyword;
    TypeDeclKind kind;
    std::string_view article;
};

constexpr TypeKeyword kTypeKeywords[] = {
    {"data", TypeDeclKind::Data, "a data type"},
    {"fault", TypeDeclKind::Fault, "a fault"},
    {"enum", TypeDeclKind::Enum, "an enumeration"},
    {"managed", TypeDeclKind::Managed, "a managed type"},
};

const TypeKeyword* FindTypeKeyword(std::string_view word) {
    for (const TypeKeyword& entry : kTypeKeywords) {
        if (entry.keyword == word) {
            return &entry;
        }
    }
    return nullptr;
}

std::string Describe(const Token& token) {
    switch (token.kind) {
    case TokenKind::End: return "the end of the file";
    case TokenKind::Text: return "a text";
    default: return "'" + std::string(token.text) + "'";
    }
}

class Parser {
public:
    Parser(const SourceManager& sources, std::uint32_t file, Reporter& reporter)
        : m_tokens(Tokenize(sources, file, reporter)), m_reporter(reporter) {
        m_file.id = file;
    }

    Syntax::File Run() {
        while (!Is(TokenKind::End)) {
            const std::size_t before = m_next;
            Guarded([this] { ParseTopLevel(); });
            if (m_next == before) { // a stray '}' or the like: nothing else would step over it
                Advance();
            }
        }
        CheckDocTaken();
        return std::move(m_file);
    }

private:
    // ---- Tokens ----

    const Token& Current() const { return m_tokens[m_next]; }

    const Token& Ahead(std::size_t count) const {
        return m_tokens[std::min(m_next + count, m_tokens.size() - 1)];
    }

    bool Is(TokenKind kind) const { return Current().kind == kind; }

    bool IsWord(std::string_view word) const { return Is(TokenKind::Name) && Current().text == word; }

    Token Advance() {
        CheckDocTaken();
        Token token = Current();
        if (!Is(TokenKind::End)) {
            ++m_next;
        }
        return token;
    }

    void CheckDocTaken() {
        Token& token = m_tokens[m_next];
        if (token.docSpan.IsValid()) {
            m_reporter.Report(token.docSpan, Diagnostics::kDanglingDoc);
            token.docSpan = {};
        }
    }

    /// The documentation before the current token, for the declaration that begins here.
    std::string TakeDoc() {
        Token& token = m_tokens[m_next];
        token.docSpan = {};
        return std::move(token.doc);
    }

    bool Accept(TokenKind kind) {
        if (!Is(kind)) {
            return false;
        }
        Advance();
        return true;
    }

    bool AcceptWord(std::string_view word) {
        if (!IsWord(word)) {
            return false;
        }
        Advance();
        return true;
    }

    [[noreturn]] void Fail(std::string_view expected) {
        ReportExpected(expected);
        throw SyntaxError();
    }

    /// A file that breaks off lacks many things: the first is told.
    void ReportExpected(std::string_view expected, const Span& opened = {}) {
        if (Is(TokenKind::End) && std::exchange(m_reportedEnd, true)) {
            return;
        }
        m_reporter.Report(Current().span, Diagnostics::kExpected, expected, Describe(Current()))
            .AddNote(opened, Diagnostics::kOpenedHere);
    }

    Token Expect(TokenKind kind, std::string_view expected) {
        if (!Is(kind)) {
            Fail(expected);
        }
        return Advance();
    }

    /// Wants the ';' that ends a declaration. When the next line begins something new, only the ';' was
    /// forgotten: the message points behind the last word, and nothing is skipped.
    void ExpectEnd(std::string_view expected) {
        if (!Is(TokenKind::Semicolon) && (Current().startsLine || Is(TokenKind::RightBrace))) {
            const Span& last = m_tokens[m_next - 1].span;
            m_reporter.Report(
                {last.file, last.offset + last.length, 1}, Diagnostics::kExpectedAfter, expected);
            return;
        }
        Expect(TokenKind::Semicolon, expected);
    }

    // ---- Recovery ----

    template <typename Function>
    void Guarded(Function parse) {
        const std::size_t before = m_next;
        try {
            parse();
        } catch (const SyntaxError&) {
            if (m_next == before && !Is(TokenKind::RightBrace)) {
                SkipToken();
            }
            SkipDeclaration();
        }
    }

    /// Skips to behind the next ';' at the end of a line or the '}' of a skipped body, or to before the '}'
    /// of the body around, or to before a line that begins a declaration.
    void SkipDeclaration() {
        int depth = 0;
        while (!Is(TokenKind::End)) {
            if (depth == 0 && (Is(TokenKind::RightBrace) || BeginsDeclaration())) {
                return;
            }
            const TokenKind kind = SkipToken();
            depth += kind == TokenKind::LeftBrace ? 1 : kind == TokenKind::RightBrace ? -1 : 0;
            const bool endsLine = kind == TokenKind::Semicolon && Current().startsLine;
            if (depth == 0 && (endsLine || kind == TokenKind::RightBrace)) {
                return;
            }
        }
    }

    TokenKind SkipToken() {
        TakeDoc();
        return Advance().kind;
    }

    bool BeginsDeclaration() const {
        if (!Current().startsLine || !Is(TokenKind::Name)) {
            return false;
        }
        if (Ahead(1).kind == TokenKind::Colon) {
            return m_hasBareProperties;
        }
        const bool keyword = IsWord("property") || IsWord("method") || IsWord("namespace")
                          || IsWord("version") || IsWord("order");
        return IsTypeStart() || (keyword && Ahead(1).kind == TokenKind::Name);
    }

    // ---- Names ----

    Name ParseName(std::string_view expected) {
        const Token token = Expect(TokenKind::Name, expected);
        return {std::string(token.text), token.span};
    }

    Name ParseText(std::string_view expected) {
        const Token token = Expect(TokenKind::Text, expected);
        return {std::string(token.text), token.span};
    }

    Name ParseNumber(std::string_view expected) {
        const Token token = Expect(TokenKind::Number, expected);
        return {std::string(token.text), token.span};
    }

    QualifiedName ParseQualifiedName(std::string_view expected) {
        QualifiedName name;
        Name part = ParseName(expected);
        name.span = part.span;
        name.parts.push_back(std::move(part.text));
        name.isClassPath = Is(TokenKind::DoubleColon);
        while (Is(TokenKind::Dot) || Is(TokenKind::DoubleColon)) {
            if (Is(TokenKind::DoubleColon) != name.isClassPath) {
                m_reporter.Report(Current().span, Diagnostics::kMixedSeparators);
                throw SyntaxError();
            }
            Advance();
            part = ParseName("a name after the separator");
            name.span.length = part.span.offset + part.span.length - name.span.offset;
            name.parts.push_back(std::move(part.text));
        }
        return name;
    }

    QualifiedName ParseDottedName(std::string_view expected) {
        QualifiedName name = ParseQualifiedName(expected);
        if (name.isClassPath) {
            m_reporter.Report(name.span, Diagnostics::kExpected, expected, "'" + name.Text() + "'");
            throw SyntaxError();
        }
        return name;
    }

    // ---- Top level ----

    void ParseTopLevel() {
        if (IsWord("namespace")) {
            ParseNamespace();
        } else if (IsWord("version")) {
            VersionDecl version = ParseVersion();
            if (NamespaceBlock* block = RequireNamespace(version.name)) {
                block->versions.push_back(std::move(version));
            }
        } else if (IsWord("order")) {
            ParseEnumOrder();
        } else if (IsTypeStart()) {
            std::unique_ptr<TypeDecl> type = ParseType(1);
            if (NamespaceBlock* block = RequireNamespace(type->name)) {
                block->types.push_back(std::move(type));
            }
        } else {
            Fail("'namespace', 'version', 'order', 'data', 'fault', 'enum' or 'managed'");
        }
    }

    /// Where a declaration goes; null, with one error a file, before the first `namespace`.
    NamespaceBlock* RequireNamespace(const Name& declared) {
        if (!m_file.blocks.empty()) {
            return &m_file.blocks.back();
        }
        if (!std::exchange(m_reportedNoNamespace, true)) {
            m_reporter.Report(declared.span, Diagnostics::kNoNamespace);
        }
        return nullptr;
    }

    void ParseNamespace() {
        Advance();
        NamespaceBlock block;
        block.name = ParseDottedName("a dotted namespace name");
        m_file.blocks.push_back(std::move(block));
        ExpectEnd("';' after the namespace");
    }

    VersionDecl ParseVersion() {
        VersionDecl version;
        version.doc = TakeDoc();
        Advance();
        version.name = ParseName("the name of the version");
        if (AcceptWord("label")) {
            version.label = ParseText("the label as a text in quotes");
        }
        if (AcceptWord("includes")) {
            do {
                version.includes.push_back(ParseDottedName("the name of a version"));
            } while (Accept(TokenKind::Comma));
        }
        ExpectEnd("';' after the version");
        return version;
    }

    void ParseEnumOrder() {
        Syntax::OrderDecl order;
        order.span = Advance().span;
        if (!AcceptWord("enum")) {
            Fail("'enum' after 'order'");
        }
        do {
            order.names.push_back(ParseQualifiedName("the name of an enumeration"));
        } while (Accept(TokenKind::Comma));
        ExpectEnd("',' or ';' after the enumeration");
        if (NamespaceBlock* block = RequireNamespace({"order", order.span})) {
            block->enumOrders.push_back(std::move(order));
        }
    }

    // ---- Types ----

    /// A keyword and a name: `data X`, `open data X`. A property named `data` has a ':' behind it.
    bool IsTypeStart() const {
        const std::size_t keyword = IsWord("open") && Ahead(1).kind == TokenKind::Name ? 1 : 0;
        const Token& token = Ahead(keyword);
        const TokenKind next = Ahead(keyword + 1).kind;
        return token.kind == TokenKind::Name && FindTypeKeyword(token.text) != nullptr
            && (next == TokenKind::Name || next == TokenKind::Number || next == TokenKind::Other);
    }

    std::unique_ptr<TypeDecl> ParseType(int depth) {
        auto type = std::make_unique<TypeDecl>();
        type->doc = TakeDoc();
        const Span start = Current().span;
        type->isOpen = IsWord("open") && Ahead(1).kind == TokenKind::Name;
        if (type->isOpen) {
            Advance();
        }
        const TypeKeyword& keyword = *FindTypeKeyword(Advance().text);
        type->kind = keyword.kind;
        if (type->isOpen && type->kind != TypeDeclKind::Data && type->kind != TypeDeclKind::Fault) {
            m_reporter.Report(start, Diagnostics::kCannotBeOpen, keyword.article);
        }
        type->name = ParseName("the name of the type");
        try {
            ParseTypeHeader(*type);
        } catch (const SyntaxError&) {
            if (!SkipToBody()) {
                return type;
            }
        }
        ParseTypeBody(*type, depth);
        return type;
    }

    /// After an error in the first line of a type: its body is still worth reading. False when it has none.
    bool SkipToBody() {
        while (!Is(TokenKind::LeftBrace) && !Is(TokenKind::Semicolon)) {
            if (Is(TokenKind::RightBrace) || Is(TokenKind::End) || BeginsDeclaration()) {
                return false;
            }
            SkipToken();
        }
        return true;
    }

    void ParseTypeHeader(TypeDecl& type) {
        if (type.kind != TypeDeclKind::Enum && Accept(TokenKind::Colon)) {
            type.base = ParseQualifiedName("the name of the base");
        }
        for (;;) {
            const Span clause = Current().span;
            if (AcceptWord("wire")) {
                CheckOnce(type.wire.has_value(), clause, "wire");
                type.wire = ParseName("the wire name");
            } else if (AcceptWord("since")) {
                CheckOnce(type.since.has_value(), clause, "since");
                type.since = ParseDottedName("the name of a version");
            } else if (type.kind == TypeDeclKind::Fault && AcceptWord("http")) {
                CheckOnce(type.httpStatus.has_value(), clause, "http");
                type.httpStatus = ParseNumber("an HTTP status");
            } else {
                break;
            }
        }
        if (!Is(TokenKind::LeftBrace) && !Is(TokenKind::Semicolon) && !Current().startsLine) {
            Fail(
                type.kind == TypeDeclKind::Fault ? "'wire', 'since', 'http', '{' or ';'"
                                                 : "'wire', 'since', '{' or ';'");
        }
        if (!type.wire) {
            m_reporter.Report(type.name.span, Diagnostics::kMissingWire, type.name.text, type.name.text);
        }
        if (!type.since) {
            m_reporter.Report(type.name.span, Diagnostics::kMissingSince, type.name.text);
        }
    }

    void ParseTypeBody(TypeDecl& type, int depth) {
        if (!Is(TokenKind::LeftBrace)) {
            ExpectEnd("'{' or ';' after the type");
            return;
        }
        if (depth > kMaxNesting) {
            m_reporter.Report(type.name.span, Diagnostics::kTooDeep);
            throw SyntaxError();
        }
        const Span opened = Advance().span;
        const bool hasBareProperties = type.kind == TypeDeclKind::Data || type.kind == TypeDeclKind::Fault;
        const bool outer = std::exchange(m_hasBareProperties, hasBareProperties);
        while (!Is(TokenKind::RightBrace) && !Is(TokenKind::End)) {
            Guarded([&] { ParseMember(type, depth); });
        }
        m_hasBareProperties = outer;
        if (Is(TokenKind::End)) {
            ReportExpected("'}'", opened);
            return;
        }
        Advance();
    }

    void ParseTag(TypeDecl& type) {
        Syntax::TagDecl tag;
        tag.doc = TakeDoc();
        tag.name = ParseName("a tag");
        type.tags.push_back(std::move(tag));
        if (!Is(TokenKind::RightBrace)) {
            Expect(TokenKind::Comma, "',' or '}' after the tag");
        }
    }

    void ParseMember(TypeDecl& type, int depth) {
        if (type.kind == TypeDeclKind::Enum) {
            ParseTag(type);
        } else if (IsTypeStart()) {
            type.nested.push_back(ParseType(depth + 1));
        } else if (type.kind == TypeDeclKind::Managed) {
            ParseManagedMember(type);
        } else if (Is(TokenKind::Name) && Ahead(1).kind != TokenKind::Name) {
            type.properties.push_back(ParseProperty());
        } else {
            Fail("a property ('name : type;') or a nested type");
        }
    }

    void ParseManagedMember(TypeDecl& type) {
        const bool hasName = Ahead(1).kind == TokenKind::Name;
        std::string doc = TakeDoc();
        if (hasName && AcceptWord("property")) {
            type.properties.push_back(ParseProperty());
            type.properties.back().doc = std::move(doc);
        } else if (hasName && AcceptWord("method")) {
            type.methods.push_back(ParseMethod());
            type.methods.back().doc = std::move(doc);
        } else {
            Fail("'property', 'method' or a nested type");
        }
    }

    // ---- Properties and methods ----

    PropertyDecl ParseProperty() {
        PropertyDecl property = ParseNameAndType("the name of the property");
        ParseFlags(property, true);
        ExpectEnd("';' after the property");
        return property;
    }

    PropertyDecl ParseNameAndType(std::string_view expected) {
        PropertyDecl property;
        property.doc = TakeDoc();
        property.name = ParseName(expected);
        Expect(TokenKind::Colon, "':' and a type");
        ParseTypeUse(property);
        return property;
    }

    void ParseTypeUse(PropertyDecl& property) {
        property.type = ParseQualifiedName("the name of a type");
        if (Is(TokenKind::LeftBracket)) {
            property.array = Advance().span;
            const Span close = Expect(TokenKind::RightBracket, "']'").span;
            property.array.length = close.offset + close.length - property.array.offset;
        }
    }

    /// The words behind a type. A result takes no `since`: there the word opens the method's own clause.
    void ParseFlags(PropertyDecl& property, bool takesSince) {
        for (;;) {
            const Span word = Current().span;
            if (AcceptWord("optional")) {
                CheckOnce(property.optional.IsValid(), word, "optional");
                property.optional = word;
            } else if (AcceptWord("secret")) {
                CheckOnce(property.secret.IsValid(), word, "secret");
                property.secret = word;
            } else if (takesSince && AcceptWord("since")) {
                CheckOnce(property.since.has_value(), word, "since");
                property.since = ParseDottedName("the name of a version");
            } else {
                return;
            }
        }
    }

    MethodDecl ParseMethod() {
        MethodDecl method;
        method.name = ParseName("the name of the method");
        Expect(TokenKind::LeftParen, "'(' and the parameters");
        while (!Is(TokenKind::RightParen)) {
            PropertyDecl parameter = ParseNameAndType("a parameter or ')'");
            ParseFlags(parameter, true);
            method.parameters.push_back(std::move(parameter));
            if (!Is(TokenKind::RightParen)) {
                Expect(TokenKind::Comma, "',' or ')' after the parameter");
            }
        }
        Advance();
        if (Accept(TokenKind::Arrow)) {
            method.result.emplace();
            method.result->name = {"result", Current().span};
            ParseTypeUse(*method.result);
            ParseFlags(*method.result, false);
        }
        while (ParseMethodClause(method)) {}
        ExpectEnd("a clause or ';' after the method");
        return method;
    }

    bool ParseMethodClause(MethodDecl& method) {
        const Span clause = Current().span;
        if (AcceptWord("wire")) {
            CheckOnce(method.wire.has_value(), clause, "wire");
            method.wire = ParseName("the wire name");
        } else if (AcceptWord("since")) {
            CheckOnce(method.since.has_value(), clause, "since");
            method.since = ParseDottedName("the name of a version");
        } else if (AcceptWord("resultSince")) {
            CheckOnce(method.resultSince.has_value(), clause, "resultSince");
            method.resultSince = ParseDottedName("the name of a version");
        } else if (AcceptWord("privilege")) {
            CheckOnce(method.privilege.has_value(), clause, "privilege");
            method.privilege = ParseText("the privilege as a text in quotes");
        } else if (AcceptWord("longRunning")) {
            CheckOnce(method.longRunning.IsValid(), clause, "longRunning");
            method.longRunning = clause;
        } else if (AcceptWord("credentials")) {
            CheckOnce(method.credentials.IsValid(), clause, "credentials");
            method.credentials = clause;
        } else if (AcceptWord("throws")) {
            CheckOnce(!method.faults.empty(), clause, "throws");
            do {
                method.faults.push_back(ParseQualifiedName("the name of a fault"));
            } while (Accept(TokenKind::Comma));
        } else {
            return false;
        }
        return true;
    }

    void CheckOnce(bool isSecond, const Span& place, std::string_view clause) {
        if (isSecond) {
            m_reporter.Report(place, Diagnostics::kClauseTwice, clause);
        }
    }

    std::vector<Token> m_tokens;
    Reporter& m_reporter;
    std::size_t m_next = 0;
    Syntax::File m_file;
    bool m_hasBareProperties = false; ///< in a body where 'name : type' is a property
    bool m_reportedNoNamespace = false;
    bool m_reportedEnd = false;
};

} // namespace

std::string Syntax::QualifiedName::Text() const {
    std::string text;
    for (const std::string& part : parts) {
        text += text.empty() ? "" : (isClassPath ? "::" : ".");
        text += part;
    }
    return text;
}

Syntax::File Parse(const SourceManager& sources, std::uint32_t file, Reporter& reporter) {
    return Parser(sources, file, reporter).Run();
}

} // namespace Schemac
