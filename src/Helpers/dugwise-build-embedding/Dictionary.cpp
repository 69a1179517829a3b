// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/Dictionary.h"

#include "Helpers/dugwise-build-embedding/Lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace dugwise {

namespace {

constexpr std::array<std::string_view, kPartsOfSpeech> kSuffixes{"noun", "verb", "adj", "adv"};

/// Lists of the database begin with its licence, in lines that begin with blanks.
bool isLicence(std::string_view line)
{
    return line.empty() || line.front() == ' ';
}

std::size_t partOfLetter(std::string_view letter)
{
    if (letter == "n")
        return 0;
    if (letter == "v")
        return 1;
    return letter == "r" ? 3 : 2; // adjectives, and those that only follow others
}

/// How close the meanings are that a pointer of the database joins.
float relationWeight(std::string_view symbol)
{
    if (symbol == "!") // the opposite
        return 0.3F;
    if (symbol == ";u" || symbol == "-u") // usage
        return 0.05F;
    if (symbol == ";r") // region
        return 0.2F;
    return symbol == "-r" ? 0.1F : 1.0F;
}

/// How common a sense is that was counted so often and is the rank-th of its word, from 1 on.
float senseWeight(float count, std::size_t rank)
{
    return count + 0.5F / std::sqrt(static_cast<float>(rank));
}

/// Reads the files one after the other into a dictionary.
class Reader
{
public:
    explicit Reader(std::string folder)
        : m_folder(std::move(folder))
    {}

    std::optional<Dictionary> read()
    {
        for (std::size_t part = 0; part < kPartsOfSpeech; ++part) {
            if (!readSynsets(part))
                return std::nullopt;
        }
        if (!resolveRelations() || !readCounts())
            return std::nullopt;
        for (std::size_t part = 0; part < kPartsOfSpeech; ++part) {
            if (!readIndex(part))
                return std::nullopt;
        }
        for (std::size_t part = 0; part < kPartsOfSpeech; ++part) {
            if (!readExceptions(part))
                return std::nullopt;
        }
        m_dictionary.ownSynsets = m_dictionary.synsets.size();
        return std::move(m_dictionary);
    }

private:
    using Place = std::uint64_t;
    static Place place(std::string_view offset, std::size_t part)
    {
        return Place{numberIn(offset)} * kPartsOfSpeech + part;
    }

    [[nodiscard]] std::optional<std::vector<std::string>> lines(std::string_view kind,
                                                                std::size_t part) const
    {
        const std::string suffix(kSuffixes.at(part));
        return linesOf(m_folder + '/'
                       + (kind == "exc" ? suffix + ".exc" : std::string(kind) + '.' + suffix));
    }

    bool readSynsets(std::size_t part)
    {
        const auto read = lines("data", part);
        if (!read)
            return false;
        for (const std::string &line : *read) {
            if (!isLicence(line) && !readSynset(line, part))
                return false;
        }
        return true;
    }

    /// offset file type count (word id)... count (pointer offset part source)... | gloss
    bool readSynset(std::string_view line, std::size_t part)
    {
        const std::size_t bar = std::min(line.find('|'), line.size());
        const auto fields = fieldsOf(line.substr(0, bar));
        const std::size_t words = fields.size() > 4 ? numberIn(fields[3], 16) : 0;
        const std::size_t pointers = 4 + 2 * words;
        if (words == 0 || fields.size() <= pointers
            || fields.size() < pointers + 1 + 4 * std::size_t{numberIn(fields[pointers])})
            return false;
        Synset synset;
        for (std::size_t i = 0; i < words; ++i) {
            const std::string_view word = fields[4 + 2 * i];
            synset.words.push_back(lowerCasedAscii(word.substr(0, word.find('(')))); // "(p)"
        }
        const auto number = static_cast<std::uint32_t>(m_dictionary.synsets.size());
        for (std::size_t i = 0; i < numberIn(fields[pointers]); ++i) {
            const std::size_t at = pointers + 1 + 4 * i;
            m_pointers.push_back({number,
                                  place(fields[at + 1], partOfLetter(fields[at + 2])),
                                  relationWeight(fields[at])});
        }
        readGloss(synset, line.substr(std::min(bar + 1, line.size())));
        m_numbers.emplace(place(fields[0], part), number);
        m_dictionary.synsets.push_back(std::move(synset));
        return true;
    }

    /// Examples stand in quotation marks behind the definition.
    static void readGloss(Synset &synset, std::string_view gloss)
    {
        bool isExample = false;
        for (const char c : gloss) {
            if (c == '"')
                isExample = !isExample;
            (isExample ? synset.examples : synset.definition) += c == '"' ? ' ' : c;
        }
    }

    bool resolveRelations()
    {
        for (const Pointer &pointer : m_pointers) {
            const auto target = m_numbers.find(pointer.target);
            if (target == m_numbers.end())
                return false;
            m_dictionary.synsets[pointer.from].relations.push_back(
                {target->second, pointer.weight});
        }
        return true;
    }

    /// lemma%type:... number count
    bool readCounts()
    {
        const auto read = linesOf(m_folder + "/cntlist.rev");
        if (!read)
            return false;
        for (const std::string &line : *read) {
            const auto fields = fieldsOf(line);
            if (fields.size() < 3 || fields[0].find('%') == std::string_view::npos)
                return false;
            const std::size_t mark = fields[0].find('%');
            constexpr unsigned kSatellite = 5; // adjectives that only follow others
            const unsigned type = numberIn(fields[0].substr(mark + 1, 1));
            const std::size_t part = type == kSatellite ? 2 : std::size_t{type} - 1;
            m_counts.emplace(
                senseKey(lowerCasedAscii(fields[0].substr(0, mark)), part, numberIn(fields[1])),
                static_cast<float>(numberIn(fields[2])));
        }
        return true;
    }

    static std::string senseKey(std::string_view word, std::size_t part, std::size_t rank)
    {
        return std::string(word) + '%' + std::to_string(part) + '%' + std::to_string(rank);
    }

    /// lemma part senses pointers pointer... senses marked offset...
    bool readIndex(std::size_t part)
    {
        const auto read = lines("index", part);
        if (!read)
            return false;
        for (const std::string &line : *read) {
            if (isLicence(line))
                continue;
            const auto fields = fieldsOf(line);
            const std::size_t first =
                fields.size() > 4 ? 6 + std::size_t{numberIn(fields[3])} : fields.size();
            if (first >= fields.size()
                || !readSenses(std::string(fields[0]),
                               part,
                               {fields.begin() + static_cast<std::ptrdiff_t>(first), fields.end()}))
                return false;
        }
        return true;
    }

    bool
    readSenses(const std::string &word, std::size_t part, std::span<const std::string_view> offsets)
    {
        float sum = 0;
        std::vector<Sense> &senses = m_dictionary.senses[word];
        for (std::size_t i = 0; i < offsets.size(); ++i) {
            const auto synset = m_numbers.find(place(offsets[i], part));
            if (synset == m_numbers.end())
                return false;
            const auto counted = m_counts.find(senseKey(word, part, i + 1));
            const float count = counted == m_counts.end() ? 0 : counted->second;
            sum += count;
            senses.push_back({synset->second, senseWeight(count, i + 1)});
        }
        const auto many = static_cast<float>(offsets.size());
        m_dictionary.wordWeights[word].at(part) = sum + 0.5F * std::sqrt(many);
        m_dictionary.tagCounts[word] += sum;
        return true;
    }

    /// form base...
    bool readExceptions(std::size_t part)
    {
        const auto read = lines("exc", part);
        if (!read)
            return false;
        for (const std::string &line : *read) {
            const auto fields = fieldsOf(line);
            for (std::size_t i = 1; i < fields.size(); ++i) {
                const bool isWord = isAlphabetic(fields[0]) && isAlphabetic(fields[i])
                                    && m_dictionary.weights(fields[i]).at(part) > 0;
                if (isWord)
                    m_dictionary.irregular[std::string(fields[0])].emplace_back(
                        static_cast<PartOfSpeech>(part), fields[i]);
            }
        }
        return true;
    }

    struct Pointer
    {
        std::uint32_t from;
        Place target;
        float weight;
    };

    std::string m_folder;
    Dictionary m_dictionary;
    std::vector<Pointer> m_pointers;
    std::unordered_map<Place, std::uint32_t> m_numbers; ///< of the synsets
    std::unordered_map<std::string, float> m_counts;    ///< of the senses
};

} // namespace

std::optional<Dictionary> Dictionary::read(const std::string &folder)
{
    return Reader(folder).read();
}

PartOfSpeechWeights Dictionary::weights(std::string_view word) const
{
    const auto found = wordWeights.find(std::string(word));
    return found == wordWeights.end() ? PartOfSpeechWeights{} : found->second;
}

std::vector<Lexicon::Irregular> Dictionary::irregularBases(std::string_view form) const
{
    std::vector<Irregular> bases;
    if (const auto found = irregular.find(form); found != irregular.end()) {
        for (const auto &[part, base] : found->second)
            bases.push_back({part, base});
    }
    return bases;
}

} // namespace dugwise
