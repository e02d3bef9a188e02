#include "mapping/MappingDocument.h"

#include <QBuffer>
#include <QDomDocument>
#include <QRegularExpression>
#include <QTextCodec>
#include <QTextStream>

#include <algorithm>

namespace
{

using MappingDocument::Outcome;

// What XML 1.0 counts as a character, halves of surrogate pairs included.
constexpr bool isCharacter(ushort c)
{
    return (c >= 0x20 && c < 0xFFFE) || c == '\t' || c == '\n' || c == '\r';
}

QTextCodec *codecOf(const QByteArray &bytes)
{
    if (QTextCodec *codec = QTextCodec::codecForUtfText(bytes, nullptr)) {
        return codec; // a byte order mark
    }
    if (bytes.startsWith(QByteArray("<\0", 2))) {
        return QTextCodec::codecForName("UTF-16LE");
    }
    if (bytes.startsWith(QByteArray("\0<", 2))) {
        return QTextCodec::codecForName("UTF-16BE");
    }
    static const QRegularExpression declaration(
        QStringLiteral("^<\\?xml\\s[^>]*\\bencoding\\s*=\\s*[\"']([A-Za-z][A-Za-z0-9._-]*)[\"']"));
    constexpr int declarationRoom = 256;
    const QRegularExpressionMatch match = declaration.match(QString::fromLatin1(bytes.left(declarationRoom)));
    return QTextCodec::codecForName(match.hasMatch() ? match.captured(1).toLatin1() : QByteArray("UTF-8"));
}

bool decode(const QByteArray &bytes, QString *text, QString *reason)
{
    QTextCodec *codec = codecOf(bytes);
    if (codec == nullptr) {
        *reason = QStringLiteral("its encoding is not known");
        return false;
    }
    QTextCodec::ConverterState state;
    *text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0) {
        *reason = QStringLiteral("it is not encoded in %1").arg(QString::fromLatin1(codec->name()));
        return false;
    }
    if (text->startsWith(QChar(QChar::ByteOrderMark))) {
        text->remove(0, 1);
    }
    const auto odd =
        std::find_if_not(text->cbegin(), text->cend(), [](QChar c) { return isCharacter(c.unicode()); });
    if (odd != text->cend()) {
        *reason = QStringLiteral("it holds the character U+%1").arg(odd->unicode(), 4, 16, QLatin1Char('0'));
        return false;
    }
    return true;
}

// The first position behind the next @p mark, or the end.
int behind(const QString &text, QLatin1String mark, int from)
{
    const int found = text.indexOf(mark, from);
    return found < 0 ? text.size() : found + mark.size();
}

struct Tag {
    int end = 0;         // the position behind it
    int quotedTexts = 0; // one an attribute
    bool closed = false; // ends with "/>"
    bool bracket = false;
};

Tag scanTag(const QString &text, int from)
{
    Tag tag;
    int i = from;
    for (; i < text.size(); ++i) {
        const ushort c = text.at(i).unicode();
        if (c == '>') {
            tag.closed = text.at(i - 1) == QLatin1Char('/');
            ++i;
            break;
        }
        if (c == '"' || c == '\'') {
            const int close = text.indexOf(QChar(c), i + 1);
            i = close < 0 ? text.size() : close;
            ++tag.quotedTexts;
        }
        tag.bracket = tag.bracket || c == '[';
    }
    tag.end = i;
    return tag;
}

// Qt's parser knows no bounds, and a tree, half-built or whole, is taken down recursively. What it would
// build is therefore counted before. Delimiters are all that has to be understood for that: the parser stops
// at its first error, and up to there the two agree on where each tag, comment and section ends.
Outcome examine(const QString &text, QString *reason)
{
    int depth = 0;
    qint64 parts = 0;
    int i = text.indexOf(QLatin1Char('<'));
    while (i >= 0 && i + 1 < text.size()) {
        const QStringView rest = QStringView(text).mid(i);
        ++parts;
        if (rest.startsWith(QLatin1String("</"))) {
            --depth;
            i += 2;
        } else if (rest.startsWith(QLatin1String("<?"))) {
            i = behind(text, QLatin1String("?>"), i + 2);
        } else if (rest.startsWith(QLatin1String("<!--"))) {
            i = behind(text, QLatin1String("-->"), i + 4);
        } else if (rest.startsWith(QLatin1String("<![CDATA["))) {
            i = behind(text, QLatin1String("]]>"), i + 9);
        } else {
            const Tag tag = scanTag(text, i + 1);
            if (rest.startsWith(QLatin1String("<!"))) {
                if (tag.bracket) {
                    *reason = QStringLiteral("it carries document type declarations");
                    return Outcome::Refused;
                }
            } else {
                parts += tag.quotedTexts;
                if (++depth > MappingDocument::maximumDepth) {
                    *reason =
                        QStringLiteral("nested deeper than %1 levels").arg(MappingDocument::maximumDepth);
                    return Outcome::Refused;
                }
                depth -= tag.closed ? 1 : 0;
            }
            i = tag.end;
        }
        if (parts > MappingDocument::maximumParts) {
            *reason = QStringLiteral("more than %1 tags and attributes").arg(MappingDocument::maximumParts);
            return Outcome::Refused;
        }
        i = text.indexOf(QLatin1Char('<'), i);
    }
    return Outcome::Parsed;
}

// Qt's parser hands the declaration on in single quotes, and its serializer believes the encoding in it.
void adjustDeclaration(QDomDocument *document)
{
    QDomProcessingInstruction declaration = document->firstChild().toProcessingInstruction();
    if (declaration.isNull() || declaration.target() != QLatin1String("xml")) {
        return;
    }
    static const QRegularExpression standalone(QStringLiteral("\\bstandalone\\s*=\\s*[\"'](yes|no)[\"']"));
    QString data = QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"");
    const QRegularExpressionMatch match = standalone.match(declaration.data());
    if (match.hasMatch()) {
        data += QStringLiteral(" standalone=\"%1\"").arg(match.captured(1));
    }
    declaration.setData(data);
}

} // namespace

Outcome MappingDocument::parse(const QByteArray &bytes, QDomDocument *document, QString *reason)
{
    // Decoded once, so that both parsers see the same text whatever the bytes may claim.
    QString text;
    if (!decode(bytes, &text, reason)) {
        return Outcome::Malformed;
    }
    const Outcome outcome = examine(text, reason);
    if (outcome != Outcome::Parsed) {
        return outcome;
    }
    QDomDocument parsed;
    int line = 0;
    QString error;
    if (!parsed.setContent(text, &error, &line)) {
        *reason = QStringLiteral("line %1: %2").arg(line).arg(error);
        return Outcome::Malformed;
    }
    *document = parsed;
    return Outcome::Parsed;
}

QByteArray MappingDocument::serialize(QDomDocument *document)
{
    constexpr int indent = 1;
    adjustDeclaration(document);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTextStream stream(&buffer);
    stream.setCodec("UTF-8");
    document->save(stream, indent);
    stream.flush();
    return buffer.data();
}

QString MappingDocument::carriable(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            kept += c;
            kept += text.at(++i);
        } else if (!c.isSurrogate() && isCharacter(c.unicode())) {
            kept += c;
        }
    }
    return kept;
}
