#include "help/Book.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QVBoxLayout>

namespace tavoline {

namespace {

constexpr char kContents[] = "index";
constexpr int kPictureEdge = 60;  // pixels that a page keeps beside its pictures

QString folder() {
  const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/../share/tavoline/livre");
  return QFileInfo::exists(beside) ? beside : QStringLiteral(TAVOLINE_SHARE_DIR "/livre");
}

Button* command(const char* name, const char* caption, const char* icon) {
  auto* button = new Button;
  button->setObjectName(QString::fromUtf8(name));
  button->Caption(caption);
  button->setIcon(QIcon::fromTheme(QString::fromUtf8(icon)));
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

}  // namespace

QVariant BookPages::loadResource(int type, const QUrl& name) {
  if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
  QImage picture(source().resolved(name).toLocalFile());
  const int room = viewport()->width() - kPictureEdge;
  if (picture.isNull() || picture.width() <= room) return picture;
  picture = picture.scaledToWidth(qRound(room * devicePixelRatioF()), Qt::SmoothTransformation);
  picture.setDevicePixelRatio(devicePixelRatioF());
  return picture;
}

void BookPages::resizeEvent(QResizeEvent* event) {
  QTextBrowser::resizeEvent(event);
  if (viewport()->width() == width_) return;
  width_ = viewport()->width();
  reload();
}

Book::Book()
    : contents_(command("Sommaire", "Sommaire", "go-home")),
      back_(command("Retour", "Retour", "go-previous")),
      close_(command("FermerLivre", "Fermer", "window-close")),
      pages_(new BookPages) {
  setObjectName(QStringLiteral("Livre"));
  setWindowTitle(QStringLiteral("Le livre de Tavoline"));
  setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                 Qt::WindowCloseButtonHint | Qt::WindowMaximizeButtonHint);
  setAttribute(Qt::WA_QuitOnClose, false);
  pages_->setObjectName(QStringLiteral("Pages"));
  pages_->setAccessibleName(QStringLiteral("Page du livre"));
  pages_->setFrameShape(QFrame::NoFrame);
  pages_->setOpenExternalLinks(false);

  auto* commands = new QHBoxLayout;
  commands->addWidget(contents_);
  commands->addWidget(back_);
  commands->addStretch();
  commands->addWidget(close_);
  auto* all = new QVBoxLayout(this);
  all->addLayout(commands);
  all->addWidget(pages_);

  contents_->OnClick = [this] { Open(QString::fromUtf8(kContents)); };
  back_->OnClick = [this] { pages_->backward(); };
  close_->OnClick = [this] { close(); };
  back_->setEnabled(false);
  connect(pages_, &QTextBrowser::backwardAvailable, back_, &QWidget::setEnabled);
}

void Book::Open(const QString& page) {
  const QString file = folder() + QStringLiteral("/") + page + QStringLiteral(".html");
  QWidget* front = QApplication::activeModalWidget();
  if (!front) front = QApplication::activeWindow();
  if (!isVisible()) {
    const QRect room = screen()->availableGeometry();
    resize(qMin(900, room.width() * 9 / 10), qMin(1000, room.height() * 9 / 10));
    QRect frame(QPoint(), size());
    frame.moveCenter(room.center());
    move(frame.topLeft());
  }
  belongTo(front);
  show();
  raise();
  activateWindow();
  pages_->setFocus();
  if (QFile::exists(file)) {
    pages_->setSource(QUrl::fromLocalFile(QFileInfo(file).canonicalFilePath()));
  } else {
    pages_->setSource(QUrl());
    pages_->setHtml(QStringLiteral(
        "<h1>Le livre n'est pas installé</h1><p>Il se trouve dans le paquet « tavoline » ; réinstallez-le."));
  }
}

QString Book::Page() const {
  return QFileInfo(pages_->source().toLocalFile()).completeBaseName();
}

void Book::belongTo(QWidget* front) {
  winId();
  if (!front || front == this || windowHandle()->transientParent() == front->windowHandle()) return;
  hide();  // a window manager asks to whom it belongs when it is shown, and no later
  windowHandle()->setTransientParent(front->windowHandle());
}

void Book::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace tavoline
