#include "SystemExtensionsTest.h"

#include <QDomDocument>
#include <QFile>
#include <QMap>

namespace platform {
namespace {

using testing::HasSubstr;
using testing::Not;
using tests::CopyOnTheBus;
using tests::onTheBus;

class TheDescriptionOfTheInterface : public tests::SystemExtensionsTest {
protected:
    /// "<name> <signature of its arguments>" of each method or signal of the application's interface.
    static QMap<QString, QString> signatures(const QString& element) {
        QFile file{INTERFACE_DESCRIPTION};
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QDomDocument description;
        EXPECT_TRUE(description.setContent(&file));
        QMap<QString, QString> found;
        const auto interfaces = description.elementsByTagName("interface");
        for (int i = 0; i < interfaces.size(); ++i) {
            const auto interface = interfaces.at(i).toElement();
            if (interface.attribute("name") != "com.kelvra.Simulator1") continue;
            for (auto entry = interface.firstChildElement(element); !entry.isNull();
                 entry = entry.nextSiblingElement(element))
                found.insert(entry.attribute("name"), signatureOf(entry));
        }
        return found;
    }

    static QString signatureOf(const QDomElement& entry) {
        QString signature;
        for (auto arg = entry.firstChildElement("arg"); !arg.isNull(); arg = arg.nextSiblingElement("arg"))
            signature += arg.attribute("type") + " ";
        return signature.trimmed();
    }

    static QVariantList argumentsOf(const QString& signature, const QString& token) {
        const QMap<QString, QVariant> examples{{"s", token},
                                               {"x", qlonglong{0}},
                                               {"(sssbbb)", onTheBus(CopyOnTheBus{})},
                                               {"a(sssbbb)", onTheBus(QList<CopyOnTheBus>{{}})}};
        QVariantList arguments;
        for (const auto& type : signature.split(' '))
            arguments << examples.value(type);
        return arguments;
    }
};

TEST_F(TheDescriptionOfTheInterface, IsHowARequestIsCalled) {
    submitAccepted();
    service->signal("ReplacementAsked", argumentsOf("s (sssbbb) (sssbbb)", service->token(0)));
    waitForCalls(2);
    const auto methods = signatures("method");
    EXPECT_EQ(methods.size(), 2);
    for (const auto& call : service->calls())
        EXPECT_EQ(call.signature(), methods.value(call.member()).remove(' ')) << call.member().toStdString();
}

TEST_F(TheDescriptionOfTheInterface, IsHowEveryAnswerIsUnderstood) {
    startService();
    auto answers = signatures("signal");
    EXPECT_EQ(answers.take("Restarting"), "");
    EXPECT_EQ(answers.size(), 5);
    std::size_t count = 0;
    for (auto answer = answers.cbegin(); answer != answers.cend(); ++answer) {
        submit("camera");
        waitForCalls(count + 1);
        service->signal(answer.key(), argumentsOf(answer.value(), service->token(count)));
        waitForAnswers(++count);
        EXPECT_THAT(delegate->heard.back(), Not(HasSubstr("failed 1"))) << answer.key().toStdString();
    }
}

} // namespace
} // namespace platform
