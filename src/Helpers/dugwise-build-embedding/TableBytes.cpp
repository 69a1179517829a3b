// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/TableBytes.h"

#include "Utilities/StableHash.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace dugwise {

using namespace EmbeddingFormat;

namespace {

/// Slots for the spellings, which are few enough that most are found at once.
std::vector<std::uint32_t> slotsFor(const std::vector<std::string> &spellings)
{
    std::vector<std::uint32_t> slots(std::bit_ceil(spellings.size() * 3 / 2 + 1));
    const std::size_t mask = slots.size() - 1;
    for (std::uint32_t number = 0; number < spellings.size(); ++number) {
        const std::uint64_t hash = fnv1a(spellings[number]);
        std::size_t at = hash & mask;
        while (slots[at] != 0)
            at = (at + 1) & mask;
        slots[at] = slotOf(hash, number);
    }
    return slots;
}

/// Collects what the file holds, and writes it down.
class Writer
{
public:
    Writer(const Dictionary &dictionary, const Vocabulary &vocabulary)
        : m_vocabulary(vocabulary)
    {
        for (std::uint32_t i = 0; i < vocabulary.size(); ++i)
            addWord(i, dictionary);
        for (const auto &[form, bases] : dictionary.irregular)
            addForm(form, bases);
    }

    [[nodiscard]] bool isWithinLimits() const
    {
        return m_fits && m_words.size() <= kMostWords && m_forms.size() <= kMostWords
               && m_text.size() <= kMostText;
    }

    std::string bytes(const std::vector<Codes> &codes, const EmbeddingTable::Vector &mean)
    {
        const std::vector<std::uint32_t> wordSlots = slotsFor(m_vocabulary.words());
        const std::vector<std::uint32_t> formSlots = slotsFor(m_formSpellings);
        Header header{kMagic,
                      0,
                      kVersion,
                      static_cast<std::uint32_t>(m_words.size()),
                      static_cast<std::uint32_t>(m_forms.size()),
                      static_cast<std::uint32_t>(m_bases.size()),
                      static_cast<std::uint32_t>(wordSlots.size()),
                      static_cast<std::uint32_t>(formSlots.size()),
                      static_cast<std::uint32_t>(m_text.size()),
                      static_cast<float>(m_vocabulary.tokens())};
        write(std::span(&header, 1));
        write(std::span(mean));
        write(std::span(m_words));
        write(std::span(m_forms));
        write(std::span(m_bases));
        write(std::span(wordSlots));
        write(std::span(formSlots));
        write(std::span(m_text));
        write(std::span(codes));
        header.checksum = checksum(std::string_view(m_bytes).substr(kChecksumEnd));
        std::memcpy(m_bytes.data(), &header, sizeof header);
        return std::move(m_bytes);
    }

private:
    void addWord(std::uint32_t number, const Dictionary &dictionary)
    {
        const std::string &word = m_vocabulary.words()[number];
        const auto tagged = dictionary.tagCounts.find(word);
        WordRecord record{spell(word),
                          packCount(m_vocabulary.count(number)),
                          packCount(tagged == dictionary.tagCounts.end() ? 0 : tagged->second),
                          {}};
        std::ranges::transform(dictionary.weights(word), record.weights.begin(), packWeight);
        m_words.push_back(record);
    }

    void addForm(const std::string &form,
                 const std::vector<std::pair<PartOfSpeech, std::string>> &bases)
    {
        const std::size_t first = m_bases.size();
        for (const auto &[part, base] : bases) {
            if (const auto word = m_vocabulary.find(base))
                m_bases.push_back(static_cast<std::uint32_t>(part) << kPartShift | *word);
        }
        const std::size_t count = m_bases.size() - first;
        m_fits = m_fits && count <= kMostBases;
        m_forms.push_back({spell(form), static_cast<std::uint32_t>(first << 4 | count)});
        m_formSpellings.push_back(form);
    }

    std::uint32_t spell(const std::string &spelling)
    {
        const std::size_t offset = m_text.size();
        m_fits = m_fits && spelling.size() <= kLongestSpelling;
        m_text += spelling;
        return packSpelling(offset, spelling.size());
    }

    template <typename T, std::size_t Extent>
    void write(std::span<T, Extent> elements)
    {
        constexpr std::size_t kAlignment = 8;
        const auto bytes = std::as_bytes(elements);
        const std::size_t at = m_bytes.size();
        m_bytes.resize((at + bytes.size() + kAlignment - 1) / kAlignment * kAlignment);
        if (!bytes.empty())
            std::memcpy(m_bytes.data() + at, bytes.data(), bytes.size());
    }

    const Vocabulary &m_vocabulary;
    std::vector<WordRecord> m_words;
    std::vector<FormRecord> m_forms;
    std::vector<std::string> m_formSpellings;
    std::vector<std::uint32_t> m_bases;
    std::string m_text;
    std::string m_bytes;
    bool m_fits = true;
};

} // namespace

std::optional<std::string> tableBytes(const Dictionary &dictionary,
                                      const Vocabulary &vocabulary,
                                      const std::vector<Codes> &codes,
                                      const EmbeddingTable::Vector &mean)
{
    Writer writer(dictionary, vocabulary);
    if (!writer.isWithinLimits())
        return std::nullopt;
    return writer.bytes(codes, mean);
}

} // namespace dugwise
