#include "mapping/MappingDocument.h"

#include "mapping/MappingLog.h"

#include <QBuffer>
#include <QDomDocument>
#include <QMap>
#include <QRegularExpression>
#include <QTextCodec>
#include <QTextStream>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace
{

using MappingDocument::Outcome;

constexpr int declarationRoom = 256; // characters in which an XML declaration ends

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

QString problem(const QXmlStreamReader &reader)
{
    return reader.error() == QXmlStreamReader::PrematureEndOfDocumentError
               ? QStringLiteral("unexpected end of file")
               : reader.errorString();
}

// About @p size characters of @p text from @p from on; no surrogate pair is cut in two.
QString pieceOf(const QString &text, int from, int size)
{
    size = std::min(size, text.size() - from);
    if (from + size < text.size() && text.at(from + size - 1).isHighSurrogate()) {
        --size;
    }
    return text.mid(from, size);
}

// Builds the tree of what a stream reader reports.
class TreeBuilder
{
public:
    // @p head is the text's begin, with its declaration. @p lines may be null.
    TreeBuilder(QDomDocument *document, std::vector<qint64> *lines, const QString &head)
        : m_document(document)
        , m_lines(lines)
        , m_head(head)
    {
        document->createDocumentFragment(); // without any node it is null, and takes none
        m_parent = *document;
    }

    // Takes the token that @p reader stands at.
    void add(const QXmlStreamReader &reader)
    {
        if (reader.isCharacters() && !reader.isCDATA()) {
            m_text += reader.text(); // may come in pieces
            return;
        }
        addText();
        switch (reader.tokenType()) {
        case QXmlStreamReader::StartDocument:
            addDeclaration(reader);
            break;
        case QXmlStreamReader::StartElement:
            addElement(reader);
            break;
        case QXmlStreamReader::EndElement:
            m_parent = m_parent.parentNode();
            break;
        case QXmlStreamReader::Characters:
            m_parent.appendChild(m_document->createCDATASection(reader.text().toString()));
            break;
        case QXmlStreamReader::Comment:
            m_parent.appendChild(m_document->createComment(reader.text().toString()));
            break;
        case QXmlStreamReader::ProcessingInstruction:
            m_parent.appendChild(
                m_document->createProcessingInstruction(reader.processingInstructionTarget().toString(),
                                                        reader.processingInstructionData().toString()));
            break;
        case QXmlStreamReader::DTD:
            addType(reader);
            break;
        default:
            break;
        }
    }

private:
    // Blanks between tags are the file's layout, which the writer makes anew.
    void addText()
    {
        const auto isBlank = [](QChar c) { return c.isSpace(); };
        if (!std::all_of(m_text.cbegin(), m_text.cend(), isBlank)) {
            m_parent.appendChild(m_document->createTextNode(m_text));
        }
        m_text.clear();
    }

    // As the writer's declarations: in UTF-8, and standalone or not as before. The reader does not tell a
    // "no" from none.
    void addDeclaration(const QXmlStreamReader &reader)
    {
        if (reader.documentVersion().isEmpty()) {
            return;
        }
        static const QRegularExpression standalone(
            QStringLiteral("^[^>]*\\bstandalone\\s*=\\s*[\"'](yes|no)[\"']"));
        QString data = QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"");
        const QRegularExpressionMatch match = standalone.match(m_head);
        if (match.hasMatch()) {
            data += QStringLiteral(" standalone=\"%1\"").arg(match.captured(1));
        }
        m_document->appendChild(m_document->createProcessingInstruction(QStringLiteral("xml"), data));
    }

    // A document has its type from the start on: what stood before it moves to a new one.
    void addType(const QXmlStreamReader &reader)
    {
        QDomDocument typed(QDomImplementation().createDocumentType(
            reader.dtdName().toString(), reader.dtdPublicId().toString(), reader.dtdSystemId().toString()));
        while (!m_document->firstChild().isNull()) {
            typed.appendChild(m_document->firstChild());
        }
        *m_document = typed;
        m_parent = *m_document;
    }

    void addElement(const QXmlStreamReader &reader)
    {
        QDomElement element = m_document->createElement(reader.qualifiedName().toString());
        const QXmlStreamAttributes attributes = reader.attributes();
        for (const QXmlStreamAttribute &attribute : attributes) {
            element.setAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
        }
        m_parent.appendChild(element);
        m_parent = element;
        if (m_lines != nullptr) {
            m_lines->push_back(reader.lineNumber());
        }
    }

    QDomDocument *m_document;
    std::vector<qint64> *m_lines;
    const QString m_head;
    QDomNode m_parent; // of what comes next
    QString m_text;
};

// A tree costs up to 400 bytes a part and is taken down recursively, and the toolkit's own way to build one
// knows no bounds: it is built here, of what the stream reader reports, and only as far as the bounds go. The
// text is handed over in pieces, so that a tag is noticed before the toolkit compares a million attributes
// with each other.
Outcome build(const QString &text, QDomDocument *document, QString *reason, std::vector<qint64> *lines)
{
    const auto refused = [reason](const QString &why) {
        *reason = why;
        return Outcome::Refused;
    };
    // Each has a part at least; told before any is built, which takes longer than anybody waits.
    if (std::count(text.cbegin(), text.cend(), QLatin1Char('<')) > MappingDocument::maximumParts) {
        return refused(QStringLiteral("more than %1 tags").arg(MappingDocument::maximumParts));
    }
    TreeBuilder tree(document, lines, text.left(declarationRoom));
    QXmlStreamReader reader;
    reader.setNamespaceProcessing(false);
    constexpr int smallestPiece = 64 * 1024;
    int handedOver = 0;
    qint64 lastEnd = 0; // of a tag or text
    int depth = 0;
    qint64 parts = 0;
    while (reader.readNext() != QXmlStreamReader::EndDocument) {
        if (reader.error() == QXmlStreamReader::PrematureEndOfDocumentError && handedOver < text.size()) {
            const int unfinished = handedOver - static_cast<int>(lastEnd);
            const QStringView part = QStringView(text).mid(handedOver - unfinished, unfinished);
            if (std::count(part.begin(), part.end(), QLatin1Char('=')) > MappingDocument::maximumAttributes) {
                return refused(QStringLiteral("a tag of more than %1 attributes")
                                   .arg(MappingDocument::maximumAttributes));
            }
            // What is unfinished is read from its begin again: the pieces grow with it.
            const QString piece = pieceOf(text, handedOver, std::max(smallestPiece, unfinished));
            handedOver += piece.size();
            reader.addData(piece);
            continue;
        }
        if (reader.hasError()) {
            *reason = QStringLiteral("line %1: %3 (column %2)")
                          .arg(reader.lineNumber())
                          .arg(reader.columnNumber())
                          .arg(problem(reader));
            return Outcome::Malformed;
        }
        lastEnd = reader.characterOffset();
        ++parts;
        if (reader.isDTD() && reader.text().contains(QLatin1Char('['))) {
            return refused(QStringLiteral("it carries document type declarations"));
        }
        if (reader.isStartElement()) {
            parts += reader.attributes().size();
            if (++depth > MappingDocument::maximumDepth) {
                return refused(
                    QStringLiteral("nested deeper than %1 levels").arg(MappingDocument::maximumDepth));
            }
        } else if (reader.isEndElement()) {
            --depth;
        }
        if (parts > MappingDocument::maximumParts) {
            return refused(
                QStringLiteral("more than %1 tags and attributes").arg(MappingDocument::maximumParts));
        }
        tree.add(reader);
    }
    return Outcome::Parsed;
}

// Depth is bounded (MappingDocument::maximumDepth).
void writeInOrder(QXmlStreamWriter *writer, const QDomElement &element)
{
    writer->writeStartElement(element.tagName());
    QMap<QString, QString> attributes;
    for (int i = 0; i < element.attributes().size(); ++i) {
        const QDomAttr attribute = element.attributes().item(i).toAttr();
        attributes.insert(attribute.name(), attribute.value());
    }
    for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
        writer->writeAttribute(it.key(), it.value());
    }
    if (element.firstChildElement().isNull() && !element.text().isEmpty()) {
        writer->writeCharacters(element.text());
    }
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        writeInOrder(writer, child);
    }
    writer->writeEndElement();
}

} // namespace

Outcome MappingDocument::parse(const QByteArray &bytes, QDomDocument *document, QString *reason,
                               std::vector<qint64> *lines)
{
    // Decoded here: the reader takes a text as it is, whatever an encoding in it may claim.
    QString text;
    if (!decode(bytes, &text, reason)) {
        return Outcome::Malformed;
    }
    QDomDocument built;
    const Outcome outcome = build(text, &built, reason, lines);
    if (outcome == Outcome::Parsed) {
        *document = built;
    }
    return outcome;
}

QByteArray MappingDocument::serialize(QDomDocument *document)
{
    constexpr int indent = 1;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTextStream stream(&buffer);
    stream.setCodec("UTF-8");
    document->save(stream, indent);
    stream.flush();
    return buffer.data();
}

QByteArray MappingDocument::serializeInOrder(const QDomDocument &document)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
    writer.writeStartDocument(QStringLiteral("1.0"), true);
    writeInOrder(&writer, document.documentElement());
    writer.writeEndDocument();
    return bytes;
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

void MappingDocument::setText(QDomElement *element, const QString &attribute, const QString &text)
{
    const QString kept = carriable(text);
    if (kept.size() != text.size()) {
        qCWarning(lcMapping).noquote() << "Characters that a mapping file cannot carry were dropped:" << kept;
    }
    element->setAttribute(attribute, kept);
}
