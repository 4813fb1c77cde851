// SPDX-License-Identifier: MIT
// The contour editor with 10,000 and 100,000 contours: from the call to the dialog that is drawn, and
// removing one row in the middle. The peer is a dialog with a QTreeWidget, filled with the same texts and
// swatches.

#include "UtilityDLL/contours/ContourEditor.h"

#include "VelmBase/WideString.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <functional>

namespace {

QApplication& Application() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "ContourEditorBench";
    static char* argv[] = {name, nullptr};
    static QApplication application(argc, argv);
    return application;
}

// A definition file that is gone at the end of a benchmark.
class ContourFile {
public:
    explicit ContourFile(int count)
        : m_path(std::filesystem::temp_directory_path() / "contour-editor-bench.cdf") {
        ContourDefinitionList list;
        list.Generate(0, count - 1, 1);
        for (int i = 0; i < count; ++i)
            list.Set(i, {.level = static_cast<double>(i), .trueColor = static_cast<std::uint32_t>(i % 256)});
        (void)list.Save(Path().c_str());
    }
    ~ContourFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    ContourFile(const ContourFile&) = delete;
    ContourFile& operator=(const ContourFile&) = delete;

    std::wstring Path() const { return FromUtf8(m_path.string()); }

private:
    std::filesystem::path m_path;
};

// What is done in the next dialog, before it is closed.
void InDialog(const std::function<void(QDialog&)>& use) {
    QTimer::singleShot(0, [use] {
        auto& dialog = dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
        dialog.grab();
        use(dialog);
        dialog.reject();
    });
}

void EditOurs(const std::wstring& path, const std::function<void(QDialog&)>& use) {
    InDialog(use);
    DLG::EditContourList(path);
}

void EditPeer(const std::wstring& path, const std::function<void(QDialog&)>& use) {
    ContourDefinitionList list;
    list.Load(path.c_str());
    QDialog dialog;
    auto* const layout = new QVBoxLayout(&dialog);
    auto* const tree = new QTreeWidget;
    layout->addWidget(tree);
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tree->setHeaderLabels({"Color Level", "Annotation", "Width", "Type"});
    const QStringList types = {"Continous", "Dashed", "Dot"};
    QMap<std::uint32_t, QIcon> swatches;
    QList<QTreeWidgetItem*> items;
    for (int i = 0; i < list.NumContours(); ++i) {
        const auto& contour = list[i];
        QIcon& swatch = swatches[contour.trueColor];
        if (swatch.isNull()) {
            QPixmap picture(16, 16);
            picture.fill(QColor::fromRgb(contour.trueColor));
            swatch = picture;
        }
        items.append(new QTreeWidgetItem(
            {QString::number(contour.level, 'f', 2), contour.annotate ? "Yes" : "No",
             QString::number(static_cast<double>(contour.lineWidth), 'f', 1), types[contour.lineType]}));
        items.back()->setIcon(0, swatch);
    }
    tree->addTopLevelItems(items);
    InDialog(use);
    dialog.exec();
}

using Edit = void(const std::wstring& path, const std::function<void(QDialog&)>& use);

template <int Count> void Open(benchmark::State& state, Edit& edit) {
    Application();
    const ContourFile file(Count);
    for (auto _ : state) edit(file.Path(), [](QDialog&) {});
}

void RemoveOurs(QDialog& dialog) {
    for (auto* const button : dialog.findChildren<QPushButton*>())
        if (button->text() == "&Remove") button->click();
}

void RemovePeer(QDialog& dialog) {
    auto* const tree = dialog.findChild<QTreeWidget*>();
    const int row = tree->indexOfTopLevelItem(tree->currentItem());
    delete tree->takeTopLevelItem(row);
    tree->setCurrentItem(tree->topLevelItem(row));
}

template <int Count> void Remove(benchmark::State& state, Edit& edit, void (&remove)(QDialog&)) {
    Application();
    const ContourFile file(Count);
    edit(file.Path(), [&](QDialog& dialog) {
        auto* const list = dialog.findChild<QTreeView*>();
        list->setCurrentIndex(list->model()->index(Count / 2, 0));
        for (auto _ : state) remove(dialog);
    });
}

template <int Count> void Register(const std::string& count) {
    const auto add = [](const std::string& name, auto run) {
        return benchmark::RegisterBenchmark(name.c_str(), run)->Unit(benchmark::kMillisecond);
    };
    add("Open" + count + "/ours", [](benchmark::State& state) { Open<Count>(state, EditOurs); });
    add("Open" + count + "/QTreeWidget", [](benchmark::State& state) { Open<Count>(state, EditPeer); });
    // No more of them than there are rows.
    add("RemoveOneOf" + count + "/ours", [](benchmark::State& state) {
        Remove<Count>(state, EditOurs, RemoveOurs);
    })->Iterations(200);
    add("RemoveOneOf" + count + "/QTreeWidget", [](benchmark::State& state) {
        Remove<Count>(state, EditPeer, RemovePeer);
    })->Iterations(200);
}

const bool s_isRegistered = [] {
    Register<10'000>("10000");
    Register<100'000>("100000");
    return true;
}();

} // namespace
