// SPDX-License-Identifier: GPL-3.0-or-later
#include "Feedback.h"

#include <json/json.h>

#include "AppPaths.h"
#include "HttpClient.h"
#include "IniFile.h"
#include "Language.h"
#include "MachineFacts.h"
#include "Requests.h"
#include "SentReports.h"
#include "Version.h"

namespace {

constexpr qsizetype LongestRemark = 1500;
constexpr qsizetype LongestContact = 100;
// A message box shows no more.
constexpr qsizetype LongestError = 500;
constexpr unsigned RequestFlags = 0x84400F00;

QString Cut(const QString& text, qsizetype units) {
    QString cut = text.left(units);
    if (cut.size() < text.size() && !cut.isEmpty() && cut.back().isHighSurrogate()) cut.chop(1);
    return cut;
}

QString GeneralError() {
    return LanguageText(QStringLiteral("ids_commiterror"), QStringLiteral("AdviseDlg"));
}

bool Parse(const QByteArray& reply, Json::Value& value) {
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    // Strict readers want an object or array, which is what a reply has to be.
    builder["stackLimit"] = 64;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    std::string errors;
    try {
        return reader->parse(reply.constData(), reply.constData() + reply.size(), &value, &errors);
    } catch (const Json::Exception&) {
        return false;  // nested too deeply
    }
}

QByteArray ReadAll(Tamar::CHttpClient::Response& response) {
    QByteArray all;
    char block[4096];
    for (qint64 size = response.ReadContent(block, sizeof(block)); size > 0;
         size = response.ReadContent(block, sizeof(block)))
        all.append(block, size);
    return all;
}

void AddParams(Tamar::CHttpClient& client, const FeedbackForm& form) {
    const MemoryFacts memory = Memory();
    const QString language = GetProfileString(QStringLiteral("Language"), QStringLiteral("ID"), QString(), ConfigIni());
    const std::pair<const char*, QString> params[] = {
        {"soft", QStringLiteral("quince_pc")},
        {"content", CutRemark(form.remark)},
        {"contact", CutContact(form.contact)},
        {"version", GetVersionText()},
        {"lang", language},
        {"os", {}},
        {"resolution", ScreenText(form.screen)},
        {"cpu", ProcessorName()},
        {"memory", QString::number(memory.totalMb)},
        {"virtual_memory", QString::number(memory.availableVirtualMb)},
    };
    QString noted;
    for (const auto& [name, value] : params) {
        client.AddParam(QLatin1String(name), value);
        noted += QLatin1String(name) + u'=' + value + u'\n';
    }
    NoteSent(QStringLiteral("POST"), QStringLiteral("/feedbacks/create.json"), noted.trimmed());
}

}  // namespace

QString CutRemark(const QString& remark) {
    return Cut(remark, LongestRemark);
}

QString CutContact(const QString& contact) {
    return Cut(contact, LongestContact);
}

FeedbackResult ReadFeedbackReply(const QByteArray& reply) {
    FeedbackResult result;
    Json::Value value;
    result.error = GeneralError();
    if (!Parse(reply, value) || !value.isObject()) return result;
    const Json::Value& answer = value["result"];
    result.sent = answer.isBool() && answer.asBool();
    const Json::Value& error = value["error"];
    const QString text = error.isString() ? QString::fromStdString(error.asString()).trimmed() : QString();
    if (!text.isEmpty()) result.error = Cut(text, LongestError);
    if (result.sent) result.error.clear();
    return result;
}

FeedbackResult SendFeedback(const QString& host, const FeedbackForm& form, const std::function<bool()>& canContinue) {
    try {
        Tamar::CHttpClient client;
        client.SetUseUtf8(true);
        client.SetCanContinue(canContinue);
        AddParams(client, form);
        client.BeginPost(host + QStringLiteral("/feedbacks/create.json"), RequestFlags);
        std::unique_ptr<Tamar::CHttpClient::Response> response;
        while (!response) response = client.Proceed();
        return ReadFeedbackReply(ReadAll(*response));
    } catch (const Tamar::httpclientexceptionW&) {
        return {false, GeneralError()};
    } catch (const Tamar::SafeIntException&) {
        return {false, GeneralError()};
    }
}
