// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EmbeddingTable.h"

#include <algorithm>
#include <cstring>

namespace dugwise {

using namespace EmbeddingFormat;

namespace {

template <typename T>
std::size_t countOf(std::string_view section)
{
    return section.size() / sizeof(T);
}

/// Element of a section, which need not be aligned.
template <typename T>
T element(std::string_view section, std::size_t index)
{
    T value;
    std::memcpy(&value, section.data() + index * sizeof(T), sizeof(T));
    return value;
}

/// Cuts sections off the front of a file.
class Divider
{
public:
    explicit Divider(std::string_view bytes)
        : m_rest(bytes)
    {}

    template <typename T>
    std::string_view take(std::size_t count)
    {
        constexpr std::size_t kAlignment = 8;
        const std::size_t size = count * sizeof(T);
        const std::size_t padded = (size + kAlignment - 1) / kAlignment * kAlignment;
        if (padded > m_rest.size()) {
            m_isShort = true;
            return {};
        }
        const std::string_view section = m_rest.substr(0, size);
        m_rest.remove_prefix(padded);
        return section;
    }

    /// Whether the sections were all there, and nothing else.
    [[nodiscard]] bool isExact() const { return !m_isShort && m_rest.empty(); }

private:
    std::string_view m_rest;
    bool m_isShort = false;
};

/// Whether the slots lead to elements only, and a search in them comes to an end.
bool areSlotsSound(std::string_view slots, std::size_t elements)
{
    bool hasFree = false;
    for (std::size_t i = 0; i < countOf<std::uint32_t>(slots); ++i) {
        const auto number = element<std::uint32_t>(slots, i) & (kMostWords + 1);
        hasFree = hasFree || number == 0;
        if (number > elements)
            return false;
    }
    return hasFree;
}

} // namespace

std::optional<EmbeddingTable> EmbeddingTable::open(const QString &path)
{
    std::optional<MappedText> file = MappedText::open(path);
    if (!file)
        return std::nullopt;
    std::optional<EmbeddingTable> table = read({file->data(), file->size()});
    if (table)
        table->m_file.emplace(std::move(*file));
    return table;
}

std::optional<EmbeddingTable> EmbeddingTable::read(std::string_view bytes)
{
    EmbeddingTable table;
    if (!table.divide(bytes) || !table.isSound())
        return std::nullopt;
    return table;
}

bool EmbeddingTable::divide(std::string_view bytes)
{
    if (bytes.size() < sizeof(Header))
        return false;
    m_header = element<Header>(bytes, 0);
    if (m_header.magic != kMagic || m_header.version != kVersion
        || m_header.checksum != checksum(bytes.substr(kChecksumEnd)))
        return false;
    Divider divider(bytes.substr(sizeof(Header)));
    m_sections.mean = divider.take<float>(kVectorSize);
    m_sections.words = divider.take<WordRecord>(m_header.words);
    m_sections.forms = divider.take<FormRecord>(m_header.forms);
    m_sections.bases = divider.take<std::uint32_t>(m_header.bases);
    m_sections.wordSlots = divider.take<std::uint32_t>(m_header.wordSlots);
    m_sections.formSlots = divider.take<std::uint32_t>(m_header.formSlots);
    m_sections.text = divider.take<char>(m_header.textBytes);
    m_sections.codes = divider.take<Codes>(m_header.words);
    return divider.isExact();
}

bool EmbeddingTable::isSound()
{
    if (!std::has_single_bit(m_header.wordSlots) || !std::has_single_bit(m_header.formSlots)
        || !(m_header.tokens > 0 && std::isfinite(m_header.tokens))
        || !areSlotsSound(m_sections.wordSlots, m_header.words)
        || !areSlotsSound(m_sections.formSlots, m_header.forms))
        return false;
    for (std::size_t i = 0; i < m_header.words; ++i) {
        if (!isInText(element<WordRecord>(m_sections.words, i).spelling))
            return false;
    }
    for (std::size_t i = 0; i < m_header.forms; ++i) {
        const auto form = element<FormRecord>(m_sections.forms, i);
        if (!isInText(form.spelling)
            || (form.bases >> 4) + (form.bases & kMostBases) > m_header.bases)
            return false;
    }
    for (std::size_t i = 0; i < m_header.bases; ++i) {
        if ((element<std::uint32_t>(m_sections.bases, i) & kNumberMask) >= m_header.words)
            return false;
    }
    m_mean = element<Vector>(m_sections.mean, 0);
    return std::ranges::all_of(m_mean, [](float value) { return std::isfinite(value); });
}

bool EmbeddingTable::isInText(std::uint32_t spelling) const
{
    return (spelling >> 8) + (spelling & kLongestSpelling) <= m_sections.text.size();
}

std::string_view EmbeddingTable::spelled(std::uint32_t spelling) const
{
    return m_sections.text.substr(spelling >> 8, spelling & kLongestSpelling);
}

template <typename Record>
std::optional<std::uint32_t> EmbeddingTable::findIn(std::string_view slots,
                                                    std::string_view records,
                                                    std::string_view spelling) const
{
    const std::uint64_t hash = fnv1a(spelling);
    const std::size_t mask = countOf<std::uint32_t>(slots) - 1;
    const std::uint32_t mark = slotOf(hash, 0) - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        const auto slot = element<std::uint32_t>(slots, at);
        const std::uint32_t number = slot & (kMostWords + 1);
        if (number == 0)
            return std::nullopt;
        if (slot - number == mark
            && spelled(element<Record>(records, number - 1).spelling) == spelling)
            return number - 1;
    }
}

std::optional<std::uint32_t> EmbeddingTable::find(std::string_view word) const
{
    return findIn<WordRecord>(m_sections.wordSlots, m_sections.words, word);
}

std::string_view EmbeddingTable::word(std::uint32_t number) const
{
    return spelled(element<WordRecord>(m_sections.words, number).spelling);
}

float EmbeddingTable::frequency(std::optional<std::uint32_t> number) const
{
    // Half an occurrence more, so that nothing has none.
    const float count =
        number ? unpackCount(element<WordRecord>(m_sections.words, *number).glossCount) : 0;
    return (count + 0.5F) / m_header.tokens;
}

float EmbeddingTable::count(std::uint32_t number) const
{
    const auto record = element<WordRecord>(m_sections.words, number);
    return unpackCount(record.glossCount) + unpackCount(record.tagCount);
}

std::optional<EmbeddingTable::Codes> EmbeddingTable::meaning(std::uint32_t number) const
{
    const auto codes = element<Codes>(m_sections.codes, number);
    return codes == kNoMeaning ? std::nullopt : std::optional(codes);
}

PartOfSpeechWeights EmbeddingTable::weights(std::string_view word) const
{
    PartOfSpeechWeights unpacked{};
    if (const auto number = find(word)) {
        const auto record = element<WordRecord>(m_sections.words, *number);
        std::ranges::transform(record.weights, unpacked.begin(), unpackWeight);
    }
    return unpacked;
}

std::vector<Lexicon::Irregular> EmbeddingTable::irregularBases(std::string_view form) const
{
    std::vector<Irregular> found;
    if (const auto number = findIn<FormRecord>(m_sections.formSlots, m_sections.forms, form)) {
        const std::uint32_t bases = element<FormRecord>(m_sections.forms, *number).bases;
        for (std::uint32_t i = 0; i < (bases & kMostBases); ++i) {
            const auto base = element<std::uint32_t>(m_sections.bases, (bases >> 4) + i);
            found.push_back(
                {static_cast<PartOfSpeech>(base >> kPartShift), word(base & kNumberMask)});
        }
    }
    return found;
}

} // namespace dugwise
