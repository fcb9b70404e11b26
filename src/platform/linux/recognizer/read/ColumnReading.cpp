#include "read/ColumnReading.h"

#include "judge/ReadingFilter.h"
#include "read/ChineseVariant.h"
#include "read/PassReader.h"
#include "read/ReaderPool.h"
#include "read/ReadingBudget.h"
#include "read/ScreenLanguages.h"
#include "read/UprightReading.h"
#include "read/Writing.h"
#include "strip/LineNormalizer.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <latch>
#include <vector>

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

constexpr double columnBudget = 3;     // seconds of processor time a worker
constexpr double goodColumn = 80;      // confidence; nothing else is tried
constexpr double leastConfidence = 60; // likewise; less is no writing
constexpr double widePart = 0.6;       // of the characters
constexpr std::size_t mostTelling = 6;

/// Marks as they are in horizontal text, as wide as ideographs.
QString horizontalMarks(QString text)
{
    static const QRegularExpression space(u"(?<![a-zA-Z0-9]) +| +(?![a-zA-Z0-9])"_s);
    static const QRegularExpression narrow(u"(?<![a-zA-Z0-9])[,:;?!](?![a-zA-Z0-9])"_s);
    static const QRegularExpression ellipsis(u"[…‥][:：.．·・…‥，,]*|[:：.．·・]{2,}[，,]*|[:：][，,]+"_s);
    static const QString vertical = u"︐︑︒︓︔︕︖︗︘︙︰︱︲︳︵︶︷︸︹︺︻︼︽︾︿﹀﹁﹂﹃﹄｜"_s;
    static const QString horizontal = u"，、。：；！？〖〗…‥—–＿（）｛｝〔〕【】《》〈〉「」『』ー"_s;
    text.remove(space);
    for (QChar &character : text) {
        const qsizetype place = vertical.indexOf(character);
        if (place >= 0)
            character = horizontal[place];
    }
    text.replace(ellipsis, u"……"_s);
    for (auto marks = narrow.globalMatch(QString(text)); marks.hasNext();) {
        QChar &mark = text[marks.next().capturedStart()];
        mark = QChar(char16_t(mark.unicode() + 0xFEE0)); // the block of wide forms
    }
    return text;
}

/// A column under way.
struct Task
{
    QRect ink;
    ReadingLanguage language;
    Reading reading{};
    Separation separation = Separation::Axis; ///< of the reading
    double worth = 0;                         ///< of the first reading, by which the languages are compared
    double simplified = 0;                    ///< evidence for simplified Chinese
};

class ColumnPass
{
public:
    ColumnPass(const QImage &turned, const SureMap &ink, LineReader &reader, ReaderPool &pool,
               const std::function<bool()> &isWanted)
        : m_turned(turned)
        , m_ink(ink)
        , m_reader(reader, isWanted)
        , m_pool(pool)
        , m_budget(pool.workers() * columnBudget)
    {
    }

    /// With `once`, the first reading that isn't empty will do.
    void run(std::vector<Task> &tasks, bool once)
    {
        withEach(tasks, [this, once](Task &task) { read(task, once); });
    }

    void tellChinese(std::vector<Task> &tasks)
    {
        withEach(tasks, [this](Task &task) {
            const StripShape shape = LineReader::stripShape(ReadingLanguage::TraditionalChinese);
            if (task.language == ReadingLanguage::VerticalChinese)
                task.simplified = simplifiedEvidence(uprightStrip(columnOf(task), task.separation, shape));
        });
    }

    void readUpright(std::vector<Task> &tasks, ReadingLanguage language)
    {
        withEach(tasks, [&](Task &task) {
            if (!m_budget.isScarce())
                task.reading = withUprightIdeographs(task.reading, columnOf(task), task.separation, language, m_reader);
        });
    }

private:
    void withEach(std::vector<Task> &tasks, const std::function<void(Task &)> &work)
    {
        std::latch done(std::ssize(tasks));
        for (Task &task : tasks) {
            m_pool.post([&] {
                if (!m_budget.isSpent() && m_reader.isWanted()) {
                    const ReadingBudget::Spending spending(m_budget);
                    work(task);
                }
                done.count_down();
            });
        }
        done.wait();
    }

    LineNormalizer columnOf(const Task &task) const
    {
        // Of a short column, a character or a mark at its ends is sometimes not found.
        const int em = task.ink.height();
        const int margin = 2 * task.ink.width() < 5 * em ? 5 * em / 4 : 0;
        return {m_turned, task.ink.adjusted(-margin, 0, margin, 0) & m_turned.rect(), m_ink};
    }

    void read(Task &task, bool once) const
    {
        const LineNormalizer column = columnOf(task);
        for (const Separation separation : column.separations()) {
            const Strip strip = column.strip(separation, LineReader::stripShape(task.language));
            for (const ReadingMode mode : {ReadingMode::Usual, ReadingMode::Other}) {
                if (task.reading.confidence >= goodColumn || (once && task.worth > 0))
                    break;
                Reading reading = m_reader.read(strip, task.language, mode);
                reading.text = tidied(horizontalMarks(reading.text));
                if (task.worth == 0)
                    task.worth = reading.confidence * double(reading.text.size());
                if (reading.confidence > task.reading.confidence && !reading.text.isEmpty()) {
                    task.reading = reading;
                    task.separation = separation;
                }
            }
        }
    }

    const QImage &m_turned;
    const SureMap &m_ink;
    const PassReader m_reader;
    ReaderPool &m_pool;
    ReadingBudget m_budget;
};

/// The columns that tell the page's language: not too short to be sure of, nor so long that they take time.
std::vector<TextColumn> tellingColumns(const QList<ColumnGroup> &groups)
{
    constexpr double best = 8; // characters
    std::vector<TextColumn> columns;
    for (const ColumnGroup &group : groups)
        columns.insert(columns.end(), group.columns.begin(), group.columns.end());
    std::ranges::stable_sort(columns, {}, [](const TextColumn &column) {
        return std::abs(std::log(column.ink.width() / (best * column.em)));
    });
    columns.resize(std::min(columns.size(), mostTelling));
    return columns;
}

} // namespace

bool ReadColumns::isPlausible() const
{
    const double least = group.isSure ? leastConfidence : goodColumn;
    int sure = 0;
    int wide = 0;
    int all = 0;
    for (const Reading &reading : readings) {
        const Scripts scripts = scriptsOf(reading.text);
        wide += scripts.wide();
        all += scripts.all();
        sure += reading.confidence >= least ? scripts.all() : 0;
    }
    // The dots of an ellipsis make a good reading doubtful.
    return all > 1 && 2 * sure > all && wide >= widePart * all;
}

QList<ReadingLanguage> verticalLanguagesOf(const QStringList &tags)
{
    QList<ReadingLanguage> languages;
    const auto add = [&](ReadingLanguage language) {
        if (!languages.contains(language) && LineReader::isInstalled(language))
            languages.append(language);
    };
    for (const QString &tag : tags) {
        if (tag.startsWith(u"ja"_s))
            add(ReadingLanguage::VerticalJapanese);
        else if (tag.startsWith(u"zh"_s))
            add(ReadingLanguage::VerticalChinese);
    }
    return languages;
}

QList<ReadColumns> readColumns(const QList<ColumnGroup> &groups, const QImage &turned, const SureMap &ink,
                               const QList<ReadingLanguage> &languages, LineReader &reader, ReaderPool &pool,
                               const std::function<bool()> &isWanted)
{
    ColumnPass pass(turned, ink, reader, pool, isWanted);
    std::vector<Task> telling;
    for (const TextColumn &column : tellingColumns(groups)) {
        for (const ReadingLanguage language : languages)
            telling.push_back({column.ink, language});
    }
    pass.run(telling, true);
    const auto worth = [&](ReadingLanguage language) {
        double sum = 0;
        for (const Task &task : telling)
            sum += task.language == language ? task.worth : 0;
        return sum;
    };
    const ReadingLanguage language = *std::ranges::max_element(languages, {}, worth);
    ScreenLanguages screen;
    if (language == ReadingLanguage::VerticalChinese) {
        pass.tellChinese(telling);
        for (const Task &task : telling)
            screen.learnSimplified(task.simplified);
    }
    std::vector<Task> tasks;
    for (const ColumnGroup &group : groups) {
        for (const TextColumn &column : group.columns) {
            const auto known = std::ranges::find_if(
                telling, [&](const Task &task) { return task.language == language && task.ink == column.ink; });
            tasks.push_back(known == telling.end() ? Task{column.ink, language} : *known);
        }
    }
    pass.run(tasks, false);
    pass.readUpright(tasks, screen.isSimplified() ? ReadingLanguage::SimplifiedChinese : *horizontalOf(language));
    QList<ReadColumns> read;
    auto task = tasks.begin();
    for (const ColumnGroup &group : groups) {
        read.append({group, {}});
        for (qsizetype i = 0; i < group.columns.size(); ++i, ++task) {
            read.last().readings.append(task->reading);
            read.last().simplified += task->simplified;
        }
    }
    return read;
}

QList<RecognizedTextObservation> observationsOf(const QList<ReadColumns> &groups, const QSize &size)
{
    QList<const ReadColumns *> order;
    for (const ReadColumns &group : groups)
        order.append(&group);
    // Rows of groups, from the top; within a row from the right, which is the top of the turned image.
    std::ranges::sort(order, {}, [](const ReadColumns *group) { return group->group.area().left(); });
    for (auto first = order.begin(); first != order.end();) {
        const int half = (*first)->group.area().center().x();
        const auto end = std::find_if(first, order.end(),
                                      [&](const ReadColumns *group) { return group->group.area().left() > half; });
        std::sort(first, end, [](const ReadColumns *a, const ReadColumns *b) {
            return a->group.area().top() < b->group.area().top();
        });
        first = end;
    }
    QList<RecognizedTextObservation> observations;
    for (const ReadColumns *read : std::as_const(order)) {
        for (qsizetype i = 0; i < read->readings.size(); ++i) {
            if (read->readings[i].text.isEmpty())
                continue;
            const TextColumn &column = read->group.columns[i];
            const QRect ink = uprightRect(column.ink, size.width());
            const QRect box =
                QRect(ink.center().x() - column.em / 2, ink.top(), column.em, ink.height()) & QRect(QPoint(), size);
            observations.append(
                {.candidates = {read->readings[i].text}, .boundingBox = NormBox::of(box, size), .isVertical = true});
        }
    }
    return observations;
}

} // namespace lucentra
