#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <vector>

class QDomDocument;
class QDomElement;

/// The XML side of mapping files: bytes to DOM and back, with bounds that keep a hostile file from exhausting
/// the stack or the memory.
namespace MappingDocument
{

/// Deepest nesting of elements; a mapping needs five. A DOM is taken down recursively.
constexpr int maximumDepth = 256;

/// Most start and end tags, attributes and comments together. Each costs a DOM up to 400 bytes; a file of the
/// largest size that holds nothing but mappings stays below.
constexpr qint64 maximumParts = 8'000'000;

/// Most attributes of one element, more or less: a mapping needs twelve. The time that many take grows with
/// their square.
constexpr int maximumAttributes = 16 * 1024;

enum class Outcome {
    Parsed,
    Malformed, ///< not well-formed XML, or not in the encoding that it claims
    Refused, ///< may be well-formed, but nested too deep, of too many parts, or with declarations of its own
};

/// Parses @p bytes into @p document, which is touched only when the outcome is Parsed.
/// Otherwise @p reason says in plain English what is wrong.
///
/// UTF-8, UTF-16 and every encoding that the XML declaration names and Qt knows are understood. Documents
/// that declare entities or attribute defaults in themselves are refused: no mapping needs them, and a few
/// bytes of them can stand for gigabytes.
///
/// @p lines, if given, has the line that each element's begin tag ends in, in document order.
Outcome parse(const QByteArray &bytes, QDomDocument *document, QString *reason,
              std::vector<qint64> *lines = nullptr);

/// @p document, as parse() gives it, in UTF-8, indented by one blank a level.
QByteArray serialize(QDomDocument *document);

/// The same, with each element's attributes in the order of their names: the same bytes for the same document
/// on every computer. Neither comments nor text beside elements.
QByteArray serializeInOrder(const QDomDocument &document);

/// @p text without the characters that XML 1.0 has no way to carry: control characters other than tab and
/// line ends, halves of surrogate pairs, U+FFFE and U+FFFF.
QString carriable(const QString &text);

/// Gives @p element an attribute with what is carriable of @p text, and a line to the log if that is not all.
void setText(QDomElement *element, const QString &attribute, const QString &text);

} // namespace MappingDocument
