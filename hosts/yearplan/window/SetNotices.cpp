// hosts/yearplan/window/SetNotices.cpp: each notice in words, and what its answers do.
#include "hosts/yearplan/window/SetNotices.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QWidget>
#include <utility>

#include "calendar/set/LocalPlaces.h"
#include "hosts/yearplan/window/OpenSet.h"
#include "hosts/yearplan/window/ServerQuestions.h"
#include "hosts/yearplan/window/WindowSync.h"
#include "platform/MessageBoxes.h"
#include "platform/System.h"
#include "platform/desktop/QtText.h"
#include "values/Error.h"

namespace velkor {
namespace {

std::string Quoted(const std::string& subject) {
  return "\"" + (subject.empty() ? "Appointment without a subject" : subject) + "\"";
}

/// The subject and the day that it begins on.
std::string NamedBy(const std::string& subject, Date start) {
  const DateFields day = start.Fields();
  const QDate date(day.year, day.month, day.day);
  return Quoted(subject) + " of " + QLocale().toString(date, QLocale::ShortFormat).toStdString();
}

std::string TextOf(const MirrorNote& note) {
  const std::string head =
      "The " + note.field + " of " + Quoted(note.subject) + " was also changed by somebody else. ";
  return note.mineKept ? head + "Your later value " + Quoted(note.kept) + " stays; theirs was " +
                             Quoted(note.other) + "."
                       : head + "Their later value " + Quoted(note.kept) + " stays; yours was " +
                             Quoted(note.other) + ".";
}

}  // namespace

std::vector<Notice> SetNotices::Look(const CalendarSet& set) {
  std::map<std::string, News> news;
  notices_.clear();
  answers_.clear();
  for (const SetSource& source : set.sources) {
    if (source.kind == SourceKind::File) continue;
    News& now = news[source.id];
    if (const auto known = news_.find(source.id); known != news_.end()) now = known->second;
    now.source = source;
    TellOfSync(now);
    if (source.kind == SourceKind::Address) continue;
    try {
      Read(now);
    } catch (const Error&) {
      // The pane tells that the mirror cannot be read.
    }
    TellOfMirror(now);
  }
  news_ = std::move(news);
  return notices_;
}

void SetNotices::Read(News& news) const {
  Mirror mirror(LocalPlaceOf(news.source, around_.dataFolder));
  const std::string revision = mirror.NewsRevision() + mirror.Revision();
  if (news.revision == revision) return;
  const Outbox outbox(mirror);
  news.questions = outbox.Questions();
  news.notes = outbox.Notes();
  news.refused = outbox.Refused();
  news.revision = revision;
}

void SetNotices::Tell(const std::string& id, const std::string& text,
                      std::vector<std::string> words, Answers answers) {
  // Calendars of one account ask the same.
  if (later_.contains(id) || answers_.contains(id)) return;
  notices_.push_back({id, text, std::move(words)});
  answers_[id] = std::move(answers);
}

void SetNotices::TellOfSync(const News& news) {
  const SourceSync* const sync = around_.sync.Of(news.source.id);
  if (!sync || sync->running) return;
  const std::string id = news.source.id;
  const auto later = [this](const std::string& notice) {
    return [this, notice] { later_.insert(notice); };
  };
  if (sync->certificate) {
    const CertificateFault certificate = *sync->certificate;
    const std::string notice = "certificate " + certificate.host;
    Tell(notice, certificate.host + " shows a certificate that this machine does not know.",
         {"Look at It...", "Later"},
         {[this, id, certificate] {
            if (AskToTrust(&around_.window, certificate)) around_.sync.Trust(id);
          },
          later(notice)});
  } else if (sync->login) {
    const SyncLogin login = *sync->login;
    const std::string notice = "login " + login.user + "@" + login.host;
    const std::string user = login.user.empty() ? "you" : login.user;
    Tell(notice, login.host + " wants the password of " + user + ".",
         {"Enter Password...", "Later"},
         {[this, id, login] {
            const auto typed =
                AskForPassword(&around_.window, login.host, {.user = login.user, .remember = true});
            if (typed) around_.sync.LogIn(id, *typed);
          },
          later(notice)});
  }
}

std::function<void()> SetNotices::With(const std::string& sourceId,
                                       const std::function<void(Outbox&)>& steps) const {
  return [this, sourceId, steps] {
    Mirror mirror(LocalPlaceOf(news_.at(sourceId).source, around_.dataFolder));
    Outbox outbox(mirror);
    steps(outbox);
    around_.onAnswer(sourceId);
  };
}

void SetNotices::TellOfMirror(const News& news) {
  const std::string source = news.source.id;
  const auto noticeId = [&](const std::string& id) { return source + " " + id; };
  for (const MirrorQuestion& question : news.questions) {
    const bool deletedThere = question.kind == MirrorQuestion::Kind::DeletedThere;
    const auto answer = [&](bool keepMine) {
      return With(source, [id = question.id, keepMine](Outbox& box) { box.Answer(id, keepMine); });
    };
    // The first answer keeps the appointment.
    Tell(noticeId(question.id),
         NamedBy(question.subject, question.start) +
             (deletedThere ? " was changed here and deleted by somebody else."
                           : " was deleted here and changed by somebody else."),
         {"Keep It", "Delete It"}, {answer(deletedThere), answer(!deletedThere)});
  }
  for (const MirrorNote& note : news.notes) {
    Tell(
        noticeId(note.id), TextOf(note), {note.mineKept ? "Take Theirs" : "Take Back", "OK"},
        {With(source, [id = note.id, this](Outbox& box) { box.TakeBack(id, around_.clock.Now()); }),
         With(source, [id = note.id](Outbox& box) { box.Dismiss(id); })});
  }
  for (const RefusedEdit& edit : news.refused) {
    if (edit.told) continue;
    const auto told = With(source, [id = edit.id](Outbox& box) { box.MarkTold(id); });
    Tell(noticeId(edit.id),
         "The server does not take the change of " + NamedBy(edit.subject, edit.start) + ": " +
             edit.reason,
         {"Export...", "OK"},
         {[this, source, edit, told] {
            Export(news_.at(source), {edit});
            told();
          },
          told});
  }
}

void SetNotices::Answer(const std::string& noticeId, std::size_t answer) {
  const auto found = answers_.find(noticeId);
  if (found == answers_.end()) return;
  // A look, which an answer may lead to, makes all of them anew.
  const std::function<void()> steps = found->second.at(answer);
  try {
    steps();
  } catch (const Error& error) {
    around_.messages.Show(
        {.text = error.Description(), .title = {}, .icon = MessageIcon::Exclamation});
  }
}

std::size_t SetNotices::RefusedOf(const std::string& sourceId) const {
  const auto found = news_.find(sourceId);
  return found == news_.end() ? 0 : found->second.refused.size();
}

void SetNotices::ExportRefused(const std::string& sourceId) {
  const auto found = news_.find(sourceId);
  if (found == news_.end()) return;
  try {
    const News news = found->second;
    Export(news, news.refused);
  } catch (const Error& error) {
    around_.messages.Show(
        {.text = error.Description(), .title = {}, .icon = MessageIcon::Exclamation});
  }
}

void SetNotices::Export(const News& news, const std::vector<RefusedEdit>& edits) {
  const QString chosen = QFileDialog::getSaveFileName(
      &around_.window, QObject::tr("Export Refused Edits"),
      ToQt(NameOf(news.source) + " refused.ics"), QObject::tr("Calendars (*.ics)"));
  if (chosen.isEmpty()) return;
  const QFileInfo file(chosen);
  const QString stem = file.path() + "/" + file.completeBaseName();
  Mirror mirror(LocalPlaceOf(news.source, around_.dataFolder));
  const Outbox outbox(mirror);
  for (std::size_t i = 0; i < edits.size(); ++i) {
    const QString number = i == 0 ? QString() : QStringLiteral(" %1").arg(i + 1);
    outbox.ExportRefused(edits[i].id, (stem + number + ".ics").toStdString());
  }
}

}  // namespace velkor
