#include "soak/logsteps.h"

#include "editor/gamelog.h"
#include "soak/generator.h"
#include "soak/world.h"

#include <QDir>
#include <QFile>

namespace plotwell::soak {
namespace {

const QString kLogName = QStringLiteral("eqlog_Torvane_soak.txt");

// How the game's log changes: bytes appended, the log emptied and written
// anew, the log deleted, or megabytes appended at once (more than one read).
enum LogChange { Append, Rewrite, Delete, Flood };

QByteArray number(Rng& rng)
{
    if (rng.chance(0.85))
        return QByteArray::number(rng.range(-8000, 8000), 'f', rng.below(3));
    return rng.pick<const char*>({"3.4028235e38", "-3.4028234E+38", "1e39", "-0", "nan", "inf", "", "1.2.3", " 7 ",
                                  "1e-45", "abc", "340282346638528859811704183484516925440"});
}

QByteArray lineEnd(Rng& rng)
{
    return rng.pick<const char*>({"\r\n", "\r\n", "\n", "", "\r"});
}

QByteArray logPiece(Rng& rng)
{
    const QByteArray stamp = "[Mon Nov 23 18:00:00 2026] ";
    switch (rng.below(8)) {
        case 0:
            return stamp + "You say, 'Your Location is 1, 2, 3'" + lineEnd(rng);
        case 1: {
            QByteArray bytes;
            for (int i = rng.between(1, 40); i > 0; --i)
                bytes += char(rng.below(256));
            return bytes;
        }
        case 2: {
            // A location cut anywhere, to be finished by a later piece or never.
            const QByteArray loc = stamp + "Your Location is " + number(rng) + ", " + number(rng) + ", " + number(rng);
            return loc.left(rng.below(int(loc.size())));
        }
        default:
            return stamp + "Your Location is " + number(rng) + ", " + number(rng) + ", " + number(rng) + lineEnd(rng);
    }
}

QString logPath(const World& w)
{
    return QDir(w.folder).filePath(kLogName);
}

} // namespace

Step makeFollowLog(Generator& g)
{
    QString answer = QStringLiteral("keep ") + kLogName;
    if (g.rng.chance(0.2))
        answer = g.rng.pick<QString>(
            {QString(), QStringLiteral("gone eqlog.txt"), QStringLiteral("dir logs"), g.mapRecipe()});
    return Step{"follow_log", {}, {answer}};
}

void runFollowLog(World& w, const Step& s)
{
    w.answers.assign(s.texts.begin(), s.texts.end());
    followGameLogFromMenu(w.editor);
}

Step makeRecordPath(Generator& g)
{
    // Switched on, it is mostly for a walk: the game writes a few locations.
    if (!g.world().editor.follower.recordPath) {
        for (int i = g.rng.between(0, 6); i > 0; --i)
            g.plan(makeLogLine(g));
    }
    return Step{"record_path", {}, {}};
}
void runRecordPath(World& w, const Step&)
{
    toggleRecordPath(w.editor);
}

Step makeStopFollowing(Generator&)
{
    return Step{"stop_following", {}, {}};
}
void runStopFollowing(World& w, const Step&)
{
    stopFollowing(w.editor);
}

Step makeLogLine(Generator& g)
{
    // The game writes mostly while the log is followed.
    if (!g.world().editor.follower.following() && g.rng.chance(0.6))
        return makeFollowLog(g);
    const int roll = g.rng.below(100);
    const LogChange change = roll < 85 ? Append : roll < 93 ? Rewrite : roll < 99 ? Delete : Flood;
    QByteArray bytes;
    for (int i = g.rng.between(1, 4); i > 0 && change != Delete; --i)
        bytes += logPiece(g.rng);
    return Step{"log_line", {double(change)}, {QString::fromLatin1(bytes)}};
}

void runLogLine(World& w, const Step& s)
{
    const QString path = logPath(w);
    const LogChange change = LogChange(s.whole(0));
    if (change == Delete) {
        QFile::remove(path);
    } else {
        QFile file(path);
        if (file.open(change == Rewrite ? QIODevice::WriteOnly | QIODevice::Truncate
                                        : QIODevice::WriteOnly | QIODevice::Append)) {
            if (change == Flood)
                file.write(QByteArray(3 << 20, 'x') + "\r\n");
            file.write(s.text(0).toLatin1());
        }
    }
    // The log's watch runs between events: not inside another step's.
    if (!s.nested)
        w.editor.runEventHandler([&w] { return pollGameLog(w.editor); });
}

} // namespace plotwell::soak
