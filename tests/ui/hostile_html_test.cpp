// HTML that tries to run or to fetch something from within the message viewer.

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

#include "ui/html_view.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

// A port of this computer that tells whether anybody came.
class Listener {
 public:
  Listener() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(socket_, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(socket_, 8) != 0 ||
        ::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
      throw std::runtime_error("no port to listen on");
    }
    port_ = ntohs(address.sin_port);
  }
  ~Listener() { ::close(socket_); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  QString Address() const { return QString("http://127.0.0.1:%1/x").arg(port_); }
  bool WasVisited() const {
    const int visitor = ::accept(socket_, nullptr, nullptr);
    if (visitor >= 0) ::close(visitor);
    return visitor >= 0;
  }

 private:
  int socket_;
  int port_ = 0;
};

// "URL" is the listener's.
constexpr auto Tricks = std::to_array<const char*>({
    "<script src=URL>document.title=1</script>",
    "<img src=URL><img srcset='URL 1x'><picture><source srcset=URL></picture><image src=URL>",
    "<img src='//127.0.0.1/x'><img src='\\\\evil.example\\a'><img src=file://evil.example/a>",
    "<body onload=x background=URL><table background=URL><td background=URL>x</table>",
    "<p style='background:url(URL);background-image:url(\"URL\");list-style-image:url(URL)'>x</p>",
    "<style>@import 'URL'; body{background-image:url(URL)} "
    "li{list-style-image:url(URL)}</style><ul><li>x</ul>",
    "<link rel=stylesheet href=URL><link rel=preconnect href=URL><link rel=icon href=URL>",
    "<meta http-equiv=refresh content='0;url=URL'><base href=URL><a href=x>x</a>",
    "<svg><style><meta http-equiv=refresh content='0;url=URL'></style><image href=URL /></svg>",
    "<noscript><!--</noscript><meta http-equiv=refresh content='0;url=URL'>-->",
    "<iframe src=URL srcdoc='<img src=URL>'></iframe><frameset><frame src=URL></frameset>",
    "<object data=URL type=image/png><embed src=URL></object><applet code=URL></applet>",
    "<video src=URL poster=URL autoplay></video><audio src=URL autoplay></audio><input type=image src=URL>",
    "<form action=URL><input name=a><button autofocus>x</button></form><isindex action=URL>",
    "<a href='javascript:x()' ping=URL>x</a><a href='vbscript:x'>x</a><a href='data:text/html,x'>x</a>",
    "<math href=URL><template><img src=URL></template><![CDATA[<img src=URL>]]>",
});

TEST(HostileHtmlTest, NothingIsFetchedAndNoOtherPageShown) {
  const Listener listener;
  for (const char* trick : Tricks) {
    HtmlView view;
    view.resize(400, 300);
    view.ShowHtml(QString(trick).replace("URL", listener.Address()), {});
    view.show();
    QTest::qWait(20);
    EXPECT_FALSE(listener.WasVisited()) << trick;
    EXPECT_TRUE(view.source().isEmpty()) << trick;
  }
}

TEST(HostileHtmlTest, EveryKindOfResourceFromOutsideIsRefused) {
  const Listener listener;
  HtmlView view;
  for (const int type :
       {QTextDocument::UnknownResource, QTextDocument::HtmlResource, QTextDocument::StyleSheetResource,
        QTextDocument::MarkdownResource, QTextDocument::UserResource}) {
    for (const QString& name :
         {listener.Address(), QString("file:///etc/hostname"), QString("/etc/hostname"), QString("qrc:/x")}) {
      EXPECT_TRUE(view.loadResource(type, QUrl(name)).toByteArray().isEmpty()) << name.toStdString();
    }
  }
  EXPECT_FALSE(listener.WasVisited());
}

// Schemes as a sender may spell them.
TEST(HostileHtmlTest, NoOtherSchemeIsOpenedHoweverItIsSpelled) {
  for (const char* link :
       {"JavaScript:x", "vbscript:x", " javascript:x", "java\tscript:x", "FILE://host/x", "file:///c:/x.exe",
        "//host/share", "\\\\host\\share", "ms-settings:x", "search-ms:query=x", "data:text/html,x",
        "ftp://host/x", "view-source:http://x", "blob:http://x", "about:blank", "x:y"}) {
    EXPECT_FALSE(MayOpenLink(QUrl(link))) << link;
  }
}

}  // namespace
}  // namespace velmora::ui
