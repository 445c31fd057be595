// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtCore/QString>

// A remark on its way to the makers.
struct FeedbackForm {
    QString remark;
    QString contact;
    QSize screen;  // in pixels
};

struct FeedbackResult {
    bool sent = false;
    QString error;  // for the user, when it was not sent
};

// The first characters of a text, counted as the receiving side does (UTF-16 units); a character that takes two of them
// is left out rather than cut.
QString CutRemark(const QString& remark);    // 1500
QString CutContact(const QString& contact);  // 100

// Sends the form with the facts of this machine to "<host>/feedbacks/create.json" and reads the answer. Blocks up to
// the client's time; `canContinue` gives it up. `error` is the language file's ids_commiterror unless the server words
// one. Any thread.
FeedbackResult SendFeedback(const QString& host, const FeedbackForm& form, const std::function<bool()>& canContinue);

// What a reply says; any bytes may be one.
FeedbackResult ReadFeedbackReply(const QByteArray& reply);
