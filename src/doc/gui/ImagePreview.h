#pragma once

#include <QImage>
#include <QObject>
#include <QString>


namespace kestrune {

/// What a look into a file has found: a picture small enough for a preview, and what the file says of itself.
struct PreviewResult {
    QString strPath;
    QImage image; ///< 24 bits, at most the size asked for; null when the file could not be read
    int nError = 1; ///< what the loader returned, 1 for success
    int nBitsPerPixel = 0;
    int nWidth = 0;
    int nHeight = 0;
    int nXResolution = 0; ///< dots an inch; 0 when the file does not say
    int nYResolution = 0;
};

/// Decodes files for a preview away from the user-interface thread, one at a time: while one is being decoded, only the last
/// request made is remembered, so that running through a folder of big files never queues them up.
class CPreviewLoader : public QObject {
    Q_OBJECT
public:
    explicit CPreviewLoader(QSize sizeLimit, QObject* pParent = nullptr);
    ~CPreviewLoader() override;

    /// Asks for a file; `Ready` comes later, on this thread, unless another request overtakes it.
    void Request(const QString& strPath);
    /// Forgets what was asked.
    void Cancel();

Q_SIGNALS:
    void Ready(const kestrune::PreviewResult& result);

private:
    void Start(const QString& strPath);
    void Finished(const PreviewResult& result);

    QSize m_sizeLimit;
    bool m_bBusy = false;
    QString m_strWanted; ///< the file whose result is to be told; empty when none is
};

/// Decodes one file now. Safe on any thread.
PreviewResult LoadPreview(const QString& strPath, QSize sizeLimit);

} // namespace kestrune
